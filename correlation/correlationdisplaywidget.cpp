#include "correlation/correlationdisplaywidget.h"

#include "base/waitcursor.h"
#include "correlation/correlationpropertiesdialog.h"
#include "correlation/correlationview.h"
#include "correlation/correlationviewproperty.h"
#include "datastore/projectdata.h"
#include "logview/displaypicture.h"
#include "logview/paperview.h"
#include "logview/picturesaving.h"
#include "logview/viewpair.h"
#include "logview/withoutselection.h"

#include <QContextMenuEvent>
#include <QDockWidget>
#include <QGraphicsScene>
#include <QLabel>
#include <QMenu>
#include <QVBoxLayout>

CorrelationDisplayWidget::CorrelationDisplayWidget(ProjectData &projectData, const QString &name,
                                                   QDockWidget *propertiesDock, QWidget *parent)
    : QWidget(parent)
    , m_data(projectData)
    , m_dock(propertiesDock)
    , m_headerScene(std::make_unique<QGraphicsScene>())
    , m_view(new CorrelationView(projectData, m_headerScene.get()))
    , m_views(new ViewPair(m_headerScene.get(), m_view))
    , m_statusLine(new QLabel)
    , m_dialog(new CorrelationPropertiesDialog(projectData, name, this))
{
    setObjectName(QStringLiteral("CorrelationDisplayWidget"));
    setWindowTitle(name);
    m_views->limitHeaders();
    m_statusLine->setObjectName(QStringLiteral("statusLine"));
    m_statusLine->setTextFormat(Qt::PlainText);
    m_statusLine->setMinimumWidth(1); // a long read-out must not widen the window
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_views, 1);
    layout->addWidget(m_statusLine);

    connect(m_dialog, &CorrelationPropertiesDialog::sendCorrelationNameChanged, this,
            &CorrelationDisplayWidget::correlationNameChanged);
    connect(m_dialog, &CorrelationPropertiesDialog::correlationDataChanged, this,
            &CorrelationDisplayWidget::updateData);
    connect(m_view, &CorrelationView::propertyWidgetChanged, this, &CorrelationDisplayWidget::setPropertyWidget);
    connect(m_view, &CorrelationView::statusChanged, this, &CorrelationDisplayWidget::setStatusLabel);
    connect(m_view, &CorrelationView::laidOut, m_views, &ViewPair::showScenes);

    if (m_dialog->isStored())
        m_view->load(m_dialog->saved(), QString());
    else
        showProperties();
}

// A panel in the dock belongs to the view and goes with it.
CorrelationDisplayWidget::~CorrelationDisplayWidget()
{
    if (m_dock && m_dock->widget() == m_view->panel())
        m_dock->setWidget(nullptr);
    m_view->disconnect(this);
    delete m_view;
}

QGraphicsView *CorrelationDisplayWidget::headerView() const
{
    return m_views->headerView();
}

void CorrelationDisplayWidget::showPanel()
{
    setPropertyWidget(m_view->panel());
}

void CorrelationDisplayWidget::correlationNameChanged(QString name)
{
    setWindowTitle(name);
    emit renamed(name);
}

void CorrelationDisplayWidget::updateData()
{
    m_view->load(m_dialog->saved(), m_dialog->flatMarker());
}

void CorrelationDisplayWidget::synchronise()
{
    if (m_dialog->readAgain())
        m_view->load(m_dialog->saved(), m_view->panel()->flatMarker());
}

void CorrelationDisplayWidget::setPropertyWidget(QWidget *propertyWidget)
{
    if (m_dock)
        m_dock->setWidget(propertyWidget);
}

void CorrelationDisplayWidget::setStatusLabel(const QString &text)
{
    m_statusLine->setText(text);
}

void CorrelationDisplayWidget::showProperties()
{
    m_dialog->showFlatMarker(m_view->panel()->flatMarker());
    m_dialog->show();
    m_dialog->raise();
    m_dialog->activateWindow();
}

void CorrelationDisplayWidget::contextMenuEvent(QContextMenuEvent *event)
{
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("correlationMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(QStringLiteral("Correlation Template"), this, &CorrelationDisplayWidget::showProperties);
    menu->popup(event->globalPos());
}

std::optional<PicturePage> CorrelationDisplayWidget::savePicture()
{
    m_view->makeAllWells();
    const logview::SavedPicture saved = logview::saveDisplayPicture(*m_headerScene, *m_view->scene(), m_data.project,
                                                                    windowTitle(), PictureFormat::Jpeg, this);
    setStatusLabel(saved.status);
    return saved.page;
}

void CorrelationDisplayWidget::renderTo(QPainter &painter)
{
    const base::WaitCursor cursor;
    m_view->makeAllWells();
    const WithoutSelection plain(*m_view->scene());
    DisplayPicture(*m_headerScene, *m_view->scene()).drawInto(painter);
}
