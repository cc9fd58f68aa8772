#pragma once

#include "host/feet.h"
#include "hostcontract.h"
#include "support/files.h"
#include "survey/surveyfolder.h"
#include "workbench/workbenchhost.h"

#include <QMainWindow>
#include <QMenuBar>
#include <QTemporaryDir>

#include <memory>

/// The workbench keeps what a host must keep, on surveys on disk and in a real menu.
class WorkbenchContract : public HostContract
{

protected:
    void makeHost() override
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_window = std::make_unique<QMainWindow>();
        m_menu = m_window->menuBar()->addMenu("&Utilities");
        m_menu->addAction("The workbench's own");
        m_host = std::make_unique<workbench::WorkbenchHost>(QStringLiteral(LORVA_SOURCE_DIR "/icons"));
        m_host->setWindow(m_window.get(), m_menu);
        m_host->setSurvey(newSurvey("First"));
    }
    void destroyHost() override
    {
        m_host.reset();
        m_window.reset();
        m_folder.reset();
    }
    host::Host &host() override { return *m_host; }
    QString addWell(const host::WellHeader &header) override
    {
        survey::WellProperties properties;
        properties.name = header.name;
        properties.x = header.x;
        properties.y = header.y;
        properties.kbElevation = static_cast<double>(header.kbElevation);
        properties.groundElevation = static_cast<double>(header.groundElevation);
        properties.totalDepth = header.totalDepth;
        properties.typeCode = header.typeCode;
        if (isInFeet())
            toFeet(&properties);
        const host::Outcome<QString> key = m_host->store().addWell(properties);
        if (!key.ok())
            qFatal("The test cannot add a well: %s", qUtf8Printable(key.error));
        return key.value;
    }
    void openOtherSurvey() override { m_host->setSurvey(newSurvey("Second")); }
    QStringList menuTexts() override
    {
        QStringList texts;
        for (const QAction *action : m_menu->actions())
            texts.append(action->text());
        return texts;
    }
    void click(const QString &menuText) override { m_menu->actions().at(menuTexts().indexOf(menuText))->trigger(); }
    void damageList() override { files::write(m_host->surveyDirectory() + "/WellInfo/.omf", "damaged"); }

    QString newSurvey(const QString &name)
    {
        const QString path = m_folder->filePath("root/" + name);
        survey::NewSurvey survey;
        survey.name = name;
        const host::Status status = survey::createSurvey(path, survey);
        if (!status.ok())
            qFatal("The test cannot make a survey: %s", qUtf8Printable(status.error));
        if (isInFeet())
            makeFeet(path);
        return path;
    }

    static void toFeet(survey::WellProperties *well)
    {
        const auto convert = [](double metres) { return metres / host::metresPerFoot; };
        well->kbElevation = convert(well->kbElevation);
        if (!host::isUndefined(static_cast<float>(well->groundElevation)))
            well->groundElevation = convert(well->groundElevation);
        well->totalDepth = convert(well->totalDepth);
    }

    static void makeFeet(const QString &survey)
    {
        QByteArray bytes = files::read(survey + "/.survey");
        if (!bytes.contains("`D\n"))
            qFatal("The test cannot make a survey in feet");
        files::write(survey + "/.survey", bytes.replace("`D\n", "`F\n"));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QMainWindow> m_window;
    QMenu *m_menu = nullptr;
    std::unique_ptr<workbench::WorkbenchHost> m_host;
};
