#include "correlation/correlationdisplaywidget.h"

#include "base/safename.h"
#include "correlation/correlationpropertiesdialog.h"
#include "correlation/correlationview.h"
#include "correlation/correlationviewproperty.h"
#include "datastore/projectdata.h"
#include "logview/displaypicture.h"
#include "logview/paperview.h"

#include <QContextMenuEvent>
#include <QDockWidget>
#include <QGraphicsScene>
#include <QLabel>
#include <QMenu>
#include <QScrollBar>
#include <QSplitter>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int markerNameMargin = 84; // pixels left of the first well, for the names of its markers
constexpr int highestHeaders = 200;
constexpr int lowestHeaders = 70;

QRectF withMargin(const QRectF &sceneRect)
{
    return sceneRect.adjusted(-markerNameMargin, 0, 0, 0);
}

} // namespace

CorrelationDisplayWidget::CorrelationDisplayWidget(ProjectData &projectData, const QString &name,
                                                   QDockWidget *propertiesDock, QWidget *parent)
    : QWidget(parent)
    , m_data(projectData)
    , m_dock(propertiesDock)
    , m_headerScene(std::make_unique<QGraphicsScene>())
    , m_headerView(new PaperView(m_headerScene.get()))
    , m_view(new CorrelationView(projectData, m_headerScene.get()))
    , m_statusLine(new QLabel)
    , m_dialog(new CorrelationPropertiesDialog(projectData, name, this))
{
    setObjectName(QStringLiteral("CorrelationDisplayWidget"));
    setWindowTitle(name);
    m_headerView->setObjectName(QStringLiteral("headerView"));
    m_headerView->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    for (QGraphicsView *view : {m_headerView, static_cast<QGraphicsView *>(m_view)}) {
        view->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        view->setTransformationAnchor(QGraphicsView::NoAnchor);
        // Both viewports must have one width, or headers and tracks would not scroll alike.
        view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    }
    m_statusLine->setObjectName(QStringLiteral("statusLine"));
    m_statusLine->setTextFormat(Qt::PlainText);
    m_statusLine->setMinimumWidth(1); // a long read-out must not widen the window
    auto *splitter = new QSplitter(Qt::Vertical);
    splitter->setHandleWidth(0);
    splitter->addWidget(m_headerView);
    splitter->addWidget(m_view);
    splitter->setCollapsible(1, false);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter, 1);
    layout->addWidget(m_statusLine);

    connect(m_dialog, &CorrelationPropertiesDialog::sendCorrelationNameChanged, this,
            &CorrelationDisplayWidget::correlationNameChanged);
    connect(m_dialog, &CorrelationPropertiesDialog::correlationDataChanged, this,
            &CorrelationDisplayWidget::updateData);
    connect(m_view, &CorrelationView::propertyWidgetChanged, this, &CorrelationDisplayWidget::setPropertyWidget);
    connect(m_view, &CorrelationView::statusChanged, this, &CorrelationDisplayWidget::setStatusLabel);
    connect(m_view, &CorrelationView::laidOut, this, &CorrelationDisplayWidget::fitScenes);
    QScrollBar *headerBar = m_headerView->horizontalScrollBar();
    const QScrollBar *bar = m_view->horizontalScrollBar();
    connect(bar, &QScrollBar::valueChanged, headerBar, &QScrollBar::setValue);
    connect(headerBar, &QScrollBar::rangeChanged, headerBar, [=] { headerBar->setValue(bar->value()); });

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

void CorrelationDisplayWidget::fitScenes()
{
    QScrollBar *bar = m_view->horizontalScrollBar();
    const bool wasAtLeft = bar->value() == bar->minimum();
    m_view->setSceneRect(withMargin(m_view->scene()->sceneRect()));
    m_headerView->setSceneRect(withMargin(m_headerScene->sceneRect()));
    if (wasAtLeft)
        bar->setValue(bar->minimum());
    const int needed =
        static_cast<int>(m_headerScene->itemsBoundingRect().bottom()) + 2 * m_headerView->frameWidth();
    m_headerView->setFixedHeight(std::clamp(needed, lowestHeaders, highestHeaders));
}

void CorrelationDisplayWidget::savePicture()
{
    const DisplayPicture picture(*m_headerScene, *m_view->scene());
    const QString path =
        m_data.project.projectFolder + QLatin1Char('/') + base::fileNameFor(windowTitle()) + QStringLiteral(".jpg");
    const base::WriteResult result = picture.saveJpeg(path);
    if (!result.ok())
        setStatusLabel(QStringLiteral("The picture %1 could not be written: %2").arg(path, result.error));
    else if (picture.isScaledDown())
        setStatusLabel(QStringLiteral("Saved as %1, scaled down to what a JPEG file can hold.").arg(path));
    else
        setStatusLabel(QStringLiteral("Saved as %1.").arg(path));
}

void CorrelationDisplayWidget::renderTo(QPainter &painter)
{
    DisplayPicture(*m_headerScene, *m_view->scene()).drawInto(painter);
}
