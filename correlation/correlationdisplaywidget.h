#pragma once

#include "logview/picturepage.h"

#include <QPointer>
#include <QWidget>

#include <memory>
#include <optional>

QT_BEGIN_NAMESPACE
class QDockWidget;
class QGraphicsScene;
class QGraphicsView;
class QLabel;
class QPainter;
QT_END_NAMESPACE

class CorrelationPropertiesDialog;
class CorrelationView;
class ViewPair;
struct ProjectData;

/// One tab of the correlation page: a correlation with its headers above, a status line below and its properties
/// dialog.
class CorrelationDisplayWidget : public QWidget
{
    Q_OBJECT

public:
    /// Shows the saved correlation \a name; where there is none, an empty view and the properties dialog as soon as the
    /// widget is shown. \a projectData must outlive it. \a propertiesDock shows the panel; null for none.
    CorrelationDisplayWidget(ProjectData &projectData, const QString &name, QDockWidget *propertiesDock,
                             QWidget *parent = nullptr);
    ~CorrelationDisplayWidget() override;

    CorrelationView *view() const { return m_view; }
    QGraphicsView *headerView() const;
    CorrelationPropertiesDialog *dialog() const { return m_dialog; }
    void showPanel();
    /// The file may have changed: what it says now is shown.
    void synchronise();

    /// Saves the picture as "<window title>.jpg" in the project folder; the status line tells where, or what failed.
    /// Gives what a printed page shows of it; nothing when the user cancelled.
    std::optional<PicturePage> savePicture();
    /// Draws the correlation over the painter's viewport.
    void renderTo(QPainter &painter);

signals:
    /// It is saved under another name now.
    void renamed(const QString &name);

public slots:
    void correlationNameChanged(QString name);
    void updateData();
    void setPropertyWidget(QWidget *propertyWidget);
    void setStatusLabel(const QString &text);
    /// Brings the dialog of the properties to the front.
    void showProperties();

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    ProjectData &m_data;
    QPointer<QDockWidget> m_dock;
    std::unique_ptr<QGraphicsScene> m_headerScene; ///< outlives the view
    CorrelationView *m_view = nullptr; ///< owned by the pair of views
    ViewPair *m_views = nullptr;
    QLabel *m_statusLine = nullptr;
    CorrelationPropertiesDialog *m_dialog = nullptr;
};
