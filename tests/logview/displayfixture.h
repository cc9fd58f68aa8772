#pragma once

#include "logview/curveheaderitem.h"
#include "logview/curveitem.h"
#include "logview/curveitempropertywidget.h"
#include "logview/markeritem.h"
#include "logview/markeritempropertywidget.h"
#include "logview/trackheaderitem.h"
#include "logview/trackitem.h"
#include "logview/trackitempropertywidget.h"
#include "logview/welldisplaywidget.h"
#include "logview/welllogsscene.h"
#include "logview/welllogsscenepropertywidget.h"
#include "logview/welllogsview.h"
#include "support/files.h"
#include "support/projectfixture.h"

#include <QComboBox>
#include <QDockWidget>
#include <QGraphicsView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>

#include <algorithm>
#include <memory>

/// A survey with the well "W" (KB 25 m, total depth 1500 m) and one display of it.
class DisplayFixture : public ProjectFixture
{
public:
    DisplayFixture()
    {
        wellKey = addWell(QStringLiteral("W"));
        host::WellHeader &header = well().header;
        header.kbElevation = 25;
        header.groundElevation = 0;
        header.totalDepth = 1500;
    }

    MemoryHost::Well &well() { return *host.find(wellKey); }
    void addLog(const QString &name, const QVector<float> &depths, const QVector<float> &values,
                const QString &unit = QStringLiteral("gapi"))
    {
        well().logs.append({name, unit, depths, values});
    }
    /// A track file of the well's template "T".
    void addTrack(int number, const QByteArray &content)
    {
        files::write(path(QStringLiteral("/Templates/W/T/Track_%1.txt").arg(number)), content);
    }
    void setDefaultLogs(const QByteArray &lines)
    {
        files::write(path(QStringLiteral("/DefaultLogs/W.txt")), "W\n" + lines);
    }
    /// Opens the project and builds the display.
    WellLogsScene *show()
    {
        open();
        launch->project.halfDotsPerInch = 48;
        launch->project.doubleDotsPerInch = 192;
        display = std::make_unique<WellDisplayWidget>(*launch, QStringLiteral("W"), QStringLiteral("T"), &dock);
        display->resize(800, 600);
        display->show();
        return display->scene();
    }

    WellLogsScene *scene() const { return display->scene(); }
    WellLogsScenePropertyWidget *panel() const { return scene()->panel(); }
    TrackItem *track(int number) const { return scene()->tracks().at(number); }
    CurveItem *curve(int trackNumber, int number) const { return track(trackNumber)->curves().at(number); }
    QString statusText() const;
    /// The panel that a click on the item shows.
    TrackItemPropertyWidget *panelOf(TrackItem *item) const { return panelAs<TrackItemPropertyWidget>(item); }
    CurveItemPropertyWidget *panelOf(CurveItem *item) const { return panelAs<CurveItemPropertyWidget>(item); }
    MarkerItemPropertyWidget *panelOf(MarkerItem *item) const { return panelAs<MarkerItemPropertyWidget>(item); }
    TrackHeaderItem *headerOf(const TrackItem *track) const { return scene()->headers().headerOf(track); }
    CurveHeaderItem *headerOf(const CurveItem *curve) const { return scene()->headers().headerOf(curve); }

    /// Types a text into a field of a panel, as a user does who then presses Enter.
    static void type(QWidget *panel, const char *field, const QString &text)
    {
        auto *edit = panel->findChild<QLineEdit *>(QString::fromLatin1(field));
        edit->setText(text);
        emit edit->editingFinished();
    }
    static QString text(const QWidget *panel, const char *field)
    {
        return panel->findChild<QLineEdit *>(QString::fromLatin1(field))->text();
    }
    /// The texts of all labels of a panel, from top to bottom and left to right.
    static QStringList captions(QWidget *panel)
    {
        panel->adjustSize();
        QList<QLabel *> labels = panel->findChildren<QLabel *>();
        std::sort(labels.begin(), labels.end(), [](const QLabel *a, const QLabel *b) {
            const int rowA = a->geometry().center().y() / 8;
            const int rowB = b->geometry().center().y() / 8;
            return rowA != rowB ? rowA < rowB : a->x() < b->x();
        });
        QStringList texts;
        for (const QLabel *label : labels)
            texts.append(label->text());
        return texts;
    }
    static void choose(QWidget *panel, const char *field, const QString &text)
    {
        panel->findChild<QComboBox *>(QString::fromLatin1(field))->setCurrentText(text);
    }

    /// What the scene shows in a rectangle, one pixel for one pixel.
    static QImage picture(QGraphicsScene *scene, const QRect &area)
    {
        QImage image(area.size(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        scene->render(&painter, QRectF(QPointF(), area.size()), area);
        return image;
    }
    QColor pixel(int x, int y) const { return picture(scene(), QRect(x, y, 1, 1)).pixelColor(0, 0); }

    /// Shows the marker of the well at a depth, as the project tree asks for it.
    MarkerItem *showMarker(const QString &name)
    {
        display->addMarker(QStringLiteral("W"), name);
        return scene()->markers().find(name);
    }
    /// A marker whose displayed depth (less KB and ground level) is \a depthM.
    void addMarker(const QString &name, float depthM, const QColor &color = QColor(200, 0, 0))
    {
        well().markers.append({name, depthM + 25, color});
    }

    QString wellKey;
    QDockWidget dock;
    std::unique_ptr<WellDisplayWidget> display;

private:
    template<class Panel>
    Panel *panelAs(QGraphicsItem *item) const
    {
        return qobject_cast<Panel *>(scene()->selection().panels().panelOf(item));
    }
};

inline QString DisplayFixture::statusText() const
{
    return display->findChild<QLabel *>(QStringLiteral("statusLine"))->text();
}
