# What most files of a library include. A longer list costs every file: all of Qt's headers took 0.6 s to load, these a quarter
# of a second, and the templates that inline functions of them use are made anew in each file. What few files include stays out.

set(LORVA_CORE_HEADERS
    <algorithm> <cmath> <functional> <limits> <memory> <optional> <utility> <vector>
    <QByteArray> <QColor> <QCoreApplication> <QDir> <QFile> <QFileInfo> <QHash> <QImage> <QMap> <QObject> <QPainter>
    <QPointer> <QScopedValueRollback> <QSet> <QString> <QStringList> <QVariant> <QVector>)

set(LORVA_UI_HEADERS ${LORVA_CORE_HEADERS}
    <QAction> <QApplication> <QCheckBox> <QComboBox> <QDialog> <QDialogButtonBox> <QGraphicsItem> <QGraphicsScene>
    <QHBoxLayout> <QHeaderView> <QKeyEvent> <QLabel> <QLineEdit> <QMenu> <QPushButton> <QScrollBar> <QSignalBlocker>
    <QTabWidget> <QTableWidget> <QVBoxLayout> <QWidget>)

set(LORVA_TEST_HEADERS ${LORVA_UI_HEADERS}
    <QGraphicsView> <QTemporaryDir> <QTest> <QTimer> <QTreeWidget>)
