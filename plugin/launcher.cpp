#include "plugin/launcher.h"

#include "base/asker.h"
#include "datastore/curvegroups.h"
#include "datastore/projectdata.h"
#include "datastore/projectseeds.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPixmap>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int pictureWidth = 480;
constexpr int pictureHeight = 360;

QLabel *label(const char *name, const QString &text, const char *styleSheet, QWidget *parent)
{
    auto *result = new QLabel(text, parent);
    result->setObjectName(QString::fromLatin1(name));
    result->setStyleSheet(QString::fromLatin1(styleSheet));
    return result;
}

// Once, for all of them: nobody else tells that what lies behind such a link is left alone.
void tellLinksOutOfSurvey(ProjectData &projectData)
{
    constexpr int mostNamed = 10;
    const QStringList links = linksOutOfSurvey(projectData.project);
    if (links.isEmpty())
        return;
    QString text =
        QStringLiteral("These links lead out of the survey, or nowhere. Nothing is read, written or removed "
                       "behind them:\n")
        + QStringList(links.mid(0, mostNamed)).join(QLatin1Char('\n'));
    if (links.size() > mostNamed)
        text += QStringLiteral("\nand %1 more").arg(links.size() - mostNamed);
    projectData.asker.warn(QStringLiteral("LORVA Launcher"), text);
}

} // namespace

Launcher::Launcher(ProjectData &projectData, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("Launcher"));
    setWindowTitle(QStringLiteral("LORVA Launcher"));
    setWindowIcon(projectData.host.icon(QStringLiteral("LORVA_wlc.png")));
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    // It closes just before the main window shows: in a host without another visible window that would end the
    // program.
    setAttribute(Qt::WA_QuitOnClose, false);
    prepareData(projectData);
    layPaper();
    buildWidgets(projectData);
}

// Its texts are black and orange on any desktop. On a dark one a paper of the grey in between lets both be read.
void Launcher::layPaper()
{
    constexpr int dark = 128;
    QPalette paper = palette();
    if (paper.color(QPalette::Window).lightness() >= dark)
        return;
    paper.setColor(QPalette::Window, QColor(94, 94, 94));
    setPalette(paper);
}

void Launcher::prepareData(ProjectData &projectData)
{
    Project &project = projectData.project;
    project.groupNames = curveGroupNames();
    project.zoneTypes = zoneTypeNames();
    const QString survey = projectData.host.surveyDirectory();
    projectData.catalogue.build();
    // While a box about a well stands there, the host may open another survey, in which this launch has no business.
    if (projectData.host.surveyDirectory() == survey) {
        openProject(projectData.host, &project);
        seedProject(project.projectFolder);
        tellLinksOutOfSurvey(projectData);
    }
    project.halfDotsPerInch = logicalDpiX() / 2.0;
    project.doubleDotsPerInch = 2 * logicalDpiX();
}

void Launcher::buildWidgets(const ProjectData &projectData)
{
    QLabel *title = label("titleLabel", QStringLiteral("LORVA"),
                          "font-weight:bold;font-style:Italics;font-size:25px;font-family:Times;color:orange;", this);
    QLabel *about =
        label("aboutLabel", QStringLiteral("HESKO Log Interpretation Software\nVersion 0.1\nDeveloped by KUB,HESKO."),
              "font-weight:bold;font-style:Italics;font-size:10px;font-family:Times;color:black;", this);

    auto *picture = new QLabel(this);
    picture->setObjectName(QStringLiteral("pictureLabel"));
    const QPixmap image(projectData.project.setupDataFolder + QStringLiteral("/icons.Default/")
                        + QStringLiteral("LORVA_wlc.png"));
    if (!image.isNull())
        picture->setPixmap(image.scaled(pictureWidth, pictureHeight, Qt::IgnoreAspectRatio, Qt::FastTransformation));

    m_progressBar = new QProgressBar(this);
    m_progressBar->setObjectName(QStringLiteral("progressBar"));
    m_progressBar->setRange(0, 100);
    m_progressBar->setTextVisible(false);
    m_progressBar->setMaximumHeight(8);
    m_progressBar->setStyleSheet(
        QStringLiteral("QProgressBar:horizontal {background: black;}QProgressBar::chunk:horizontal{background: "
                       "qlineargradient(x1: 0, y1: 0.5, x2: 1, y2: 0.5, stop: 0 #4488ff, stop: 1 #66ccff);}"));

    m_statusLabel = new QLabel(this);
    m_statusLabel->setObjectName(QStringLiteral("statusLabel"));
    m_statusLabel->setTextFormat(Qt::PlainText);
    auto *close = new QPushButton(QStringLiteral("Close"), this);
    close->setObjectName(QStringLiteral("closeButton"));
    close->setMaximumWidth(50);
    close->setStyleSheet(QStringLiteral("border: 3px solid black;border-radius: 6px;"));
    connect(close, &QPushButton::clicked, this, &Launcher::close);

    auto *titleRow = new QHBoxLayout;
    titleRow->addWidget(title);
    titleRow->addStretch();
    auto *bottomRow = new QHBoxLayout;
    bottomRow->addWidget(m_statusLabel);
    bottomRow->addStretch(1);
    bottomRow->addWidget(close, 0, Qt::AlignRight);
    auto *column = new QVBoxLayout(this);
    column->addLayout(titleRow);
    column->addWidget(about);
    column->addStretch(1);
    column->addWidget(picture);
    column->addWidget(m_progressBar);
    column->addLayout(bottomRow);
}

void Launcher::setProgress(int percent)
{
    m_progressBar->setValue(percent);
}

void Launcher::setStatus(const QString &text)
{
    m_statusLabel->setText(text);
}
