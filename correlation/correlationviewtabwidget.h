#pragma once

#include "logview/picturepage.h"

#include <QPointer>
#include <QStringList>
#include <QWidget>

#include <optional>

QT_BEGIN_NAMESPACE
class QDockWidget;
class QPainter;
class QTabWidget;
class QTreeWidgetItem;
QT_END_NAMESPACE

class CorrelationDisplayWidget;
struct ProjectData;
struct TemplateId;

/// The work area "Correlation View": one tab for each open correlation. Correlations are known by name.
class CorrelationViewTabWidget : public QWidget
{
    Q_OBJECT

public:
    /// \a pages are the work areas, to bring this one forward; \a propertiesDock takes the panels. Neither is owned;
    /// \a projectData must outlive the widget.
    CorrelationViewTabWidget(ProjectData &projectData, QDockWidget *propertiesDock, QTabWidget *pages,
                             QWidget *parent = nullptr);

    /// Names of the open correlations, in the order of the tabs.
    const QStringList &names() const { return m_names; }
    CorrelationDisplayWidget *display(int tab) const;
    /// Null when none is open.
    CorrelationDisplayWidget *currentDisplay() const;

    /// Closes the current correlation, as its tab's button does; nothing when none is open.
    void closeCurrent();

    /// Gives the dock the panel of the current correlation, when this work area is the one in front.
    void showCurrentPanel();

    /// Saves the picture of the current correlation, and gives what a printed page shows of it: nothing when the user
    /// cancelled, an empty one without a correlation.
    std::optional<PicturePage> saveCurrentPicture();
    /// Draws the current correlation over the painter's viewport; nothing without one.
    void renderCurrent(QPainter &painter);

    /// Closes the tabs of correlations that are none of these, without a question; one that was never saved stays.
    void keepOnly(const QStringList &existing);
    /// The correlation was deleted: its tab goes without a question.
    void forget(const QString &name);
    /// A well changed in the host, or with an empty name any of them: open correlations follow.
    void wellChanged(const QString &wellName);

    /// A template was written, and may have taken another one's place: open correlations that use one of them are drawn
    /// anew, and all offer it.
    void applyTemplate(const TemplateId &now, const TemplateId &was);

signals:
    /// An open correlation is saved under another name now.
    void correlationRenamed(const QString &oldName, const QString &newName);

public slots:
    void addCorrelation(QTreeWidgetItem *item);
    void closeCorrTab(int tab);
    void tabChanged(int tab);
    void correlationNameChanged(int tab, const QString &name);

private:
    void removeTab(int tab);

    ProjectData &m_data;
    QPointer<QDockWidget> m_dock;
    QPointer<QTabWidget> m_pages;
    QTabWidget *m_tabs;
    QStringList m_names;
};
