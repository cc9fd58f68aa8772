#pragma once

#include "correlation/correlationproperties.h"
#include "support/files.h"
#include "support/projectfixture.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>

/// Three wells ("A": KB 25 m, depth 1500 m; "B": KB 30 m, 2000 m; "C": KB 0, 1000 m) with markers, the template "T" for all,
/// and saved correlations.
class CorrelationFixture : public ProjectFixture
{
public:
    static constexpr const char *linearTrack =
        "Linear\nGamma | GR | 0 | 150 | #0e6f21|0,#ffffff|0,#ffffff|None | None | 0 | 0\n";
    static constexpr const char *depthTrack = "Depth\nDepth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0\n";

    CorrelationFixture()
    {
        open(); // makes the project, with its seeds
        addDeepWell("A", 25, 1500, {{"Top", 525}, {"Base", 925}});
        addDeepWell("B", 30, 2000, {{"Top", 630}, {"Base", 1030}, {"Only B", 1200}});
        addDeepWell("C", 0, 1000, {{"Top", 300}});
        files::write(path(QStringLiteral("/Templates/Global/T/Track_1.txt")), linearTrack);
        files::write(path(QStringLiteral("/Templates/Global/T/Track_2.txt")), depthTrack);
    }

    struct Top
    {
        const char *name;
        float depthM; ///< along hole
    };
    void addDeepWell(const char *name, float kb, double totalDepth, const QVector<Top> &tops)
    {
        MemoryHost::Well &well = *host.find(addWell(QString::fromUtf8(name)));
        well.header.kbElevation = kb;
        well.header.groundElevation = 0;
        well.header.totalDepth = totalDepth;
        QVector<float> depths;
        QVector<float> values;
        for (int depth = 0; depth <= static_cast<int>(totalDepth); depth += 100) {
            depths.append(static_cast<float>(depth));
            values.append(75);
        }
        well.logs.append({QStringLiteral("GR"), QStringLiteral("gapi"), depths, values});
        for (const Top &top : tops)
            well.markers.append({QString::fromUtf8(top.name), top.depthM, QColor(200, 0, 0)});
    }

    QString filePath(const QString &name) const
    {
        return path(QStringLiteral("/Correlations/") + name + QStringLiteral("/properties.txt"));
    }
    void store(const QString &name, const QByteArray &wells = "2\nA:T\nB:T\n", const QByteArray &markers = "1\nTop\n",
               const QByteArray &zones = "0\n", const QByteArray &flag = "1")
    {
        files::write(filePath(name),
                     "Correlation:" + name.toUtf8() + "\nTrackWidth:1.2\nScale:1000\nNumber Of Wells:" + wells
                         + "Marker:" + markers + "Perforation Flag:" + flag + "\nZones:" + zones);
    }
    /// Opens the project as a launch on a screen of 96 dots an inch does; once.
    void openAt96Dots()
    {
        if (m_isOpen)
            return;
        m_isOpen = true;
        open();
        launch->project.halfDotsPerInch = 48;
        launch->project.doubleDotsPerInch = 192;
    }

    template<class Widget>
    static Widget *find(const QWidget *parent, const char *name)
    {
        auto *found = parent->findChild<Widget *>(QString::fromLatin1(name));
        if (!found)
            qFatal("no %s", name);
        return found;
    }
    static QComboBox *chooser(QTableWidget *table, int row, int column)
    {
        return qobject_cast<QComboBox *>(table->cellWidget(row, column));
    }

private:
    bool m_isOpen = false;
};
