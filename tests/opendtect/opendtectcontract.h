#pragma once

#include "host/feet.h"
#include "host/hostcontract.h"
#include "host/opendtect/opendtecthost.h"
#include "odprogram.h"
#include "odsurvey.h"
#include "support/files.h"

#include <QMenu>

#include <memory>

#include <ioman.h>
#include <uimainwin.h>
#include <uimenu.h>
#include <uistring.h>
#include <welldata.h>
#include <wellman.h>

/// The adapter on the host's own libraries, in a window and a menu of the host's kind.
class OpendTectContract : public HostContract
{
protected:
    void makeHost() override
    {
        m_survey = openSurvey();
        m_window = std::make_unique<uiMainWin>(nullptr, toUiString("Host"), 0, true);
        m_menu = std::make_unique<uiMenu>(toUiString("Utilities"));
        m_host = std::make_unique<opendtect::OpendTectHost>(m_window.get(), m_menu.get());
    }
    void destroyHost() override
    {
        m_host.reset();
        m_menu.reset();
        m_window.reset();
    }
    host::Host &host() override { return *m_host; }
    QString addWell(const host::WellHeader &header) override
    {
        odsurvey::Well well;
        well.header = header;
        const double unit = isInFeet() ? host::metresPerFoot : 1;
        const double kb = static_cast<double>(header.kbElevation) / unit;
        const double totalDepth = header.totalDepth / unit;
        well.track = {{header.x, header.y, -kb, 0}, {header.x, header.y, totalDepth - kb, totalDepth}};
        if (isInFeet())
            well.header.groundElevation = host::metresToFeet(header.groundElevation);
        const QString key = odsurvey::add(well);
        giveName(key, header.name);
        // The host knows the type of a well in its memory only.
        if (header.typeCode != host::NoWellType)
            Well::MGR().get(MultiID(key.toLatin1().constData()))->info().welltype_ =
                static_cast<Well::Info::WellType>(header.typeCode);
        return key;
    }
    void openOtherSurvey() override { m_survey = openSurvey(); }
    QStringList menuTexts() override
    {
        QStringList texts;
        for (const QAction *action : m_menu->getQMenu()->actions())
            texts.append(action->text());
        return texts;
    }
    void click(const QString &menuText) override
    {
        m_menu->getQMenu()->actions().at(menuTexts().indexOf(menuText))->trigger();
    }
    void damageList() override { files::write(m_survey + "/WellInfo/.omf", "damaged"); }

    // The host's functions number a second well of one name; its files may hold two all the same.
    void giveName(const QString &key, const QString &name)
    {
        const QString path = m_survey + "/WellInfo/.omf";
        const QByteArray number = key.section('.', 1).toLatin1();
        QByteArrayList lines = files::read(path).split('\n');
        for (QByteArray &line : lines)
            if (line.endsWith(": " + number) && !line.startsWith("ID:"))
                line = name.toUtf8() + ": " + number;
        files::write(path, lines.join('\n'));
        IOM().to(MultiID(key.toLatin1().constData()), true);
    }

    QString openSurvey() const
    {
        static int number = 0;
        return odsurvey::open(QStringLiteral("Survey_%1").arg(++number),
                              isInFeet() ? survey::DepthUnit::Foot : survey::DepthUnit::Metre);
    }

    QString m_survey;
    std::unique_ptr<uiMainWin> m_window;
    std::unique_ptr<uiMenu> m_menu;
    std::unique_ptr<opendtect::OpendTectHost> m_host;
};
