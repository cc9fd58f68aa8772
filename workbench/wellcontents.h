#pragma once

#include "survey/surveystore.h"
#include "workbench/filechooser.h"

#include <QWidget>

QT_BEGIN_NAMESPACE
class QLabel;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;
QT_END_NAMESPACE

namespace base {
class Asker;
}

namespace workbench {

/// The logs and markers of one well as a tree: names, units, depths and colours, which the user changes in place. Every
/// change is written at once.
class WellContents : public QWidget
{
    Q_OBJECT

public:
    WellContents(survey::SurveyStore &store, base::Asker &asker, const FileChooser &chooser,
                 QWidget *parent = nullptr);

    /// Shows another well, or none for an empty key; the same well is read again and what was selected stays so.
    void showWell(const host::WellEntry &well);

signals:
    /// Something was written.
    void changed();

private:
    enum Kind { LogKind = 1, MarkerKind }; ///< of an item; without one it is a group

    void buildWidgets();
    QPushButton *addButton(const char *objectName, const QString &text, void (WellContents::*clicked)());
    void fillLogs();
    void fillMarkers();
    void countSamples(QTreeWidgetItem *item);
    void enableButtons();
    QTreeWidgetItem *current() const;
    static bool isA(const QTreeWidgetItem *item, Kind kind);
    int markerIndex(const QTreeWidgetItem *item) const;
    void finish(const QString &title, const host::Status &status);

    void beginRename();
    void beginDepth();
    void edit(QTreeWidgetItem *item, int column);
    void takeEdit(QTreeWidgetItem *item, int column);
    void chooseColor();
    void deleteCurrent();
    void deleteLog(const QString &name);
    void deleteMarker(int index);
    void importTops();

    survey::SurveyStore &m_store;
    base::Asker &m_asker;
    FileChooser m_chooser;
    host::WellEntry m_well;
    survey::DepthUnit m_unit = survey::DepthUnit::Metre;
    double m_totalDepthM = 0;
    QVector<host::Marker> m_markers;
    QTreeWidget *m_tree = nullptr;
    QLabel *m_status = nullptr;
    QPushButton *m_rename = nullptr;
    QPushButton *m_depth = nullptr;
    QPushButton *m_color = nullptr;
    QPushButton *m_delete = nullptr;
    QPushButton *m_tops = nullptr;
    bool m_isFilling = false;
};

} // namespace workbench
