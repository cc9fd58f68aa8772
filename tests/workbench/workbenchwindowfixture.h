#pragma once

#include "dialogscript.h"
#include "support/files.h"
#include "support/scriptedasker.h"
#include "survey/surveyfolder.h"
#include "workbench/windowsettings.h"
#include "workbench/workbenchhost.h"
#include "workbench/workbenchwindow.h"

#include <QMouseEvent>
#include <QSplitter>
#include <QTableView>

inline QStringList rowTexts(const QAbstractItemModel *model, int row)
{
    QStringList texts;
    for (int column = 0; column < model->columnCount(); ++column)
        texts.append(model->index(row, column).data().toString());
    return texts;
}

inline QStringList columnTexts(const QAbstractItemModel *model, int column)
{
    QStringList texts;
    for (int row = 0; row < model->rowCount(); ++row)
        texts.append(model->index(row, column).data().toString());
    return texts;
}

/// Moves the border behind the first of two widgets.
inline void dragBorder(QSplitter *splitter, int pixels)
{
    QWidget *grip = splitter->handle(1);
    const QPoint middle = grip->rect().center();
    QTest::mousePress(grip, Qt::LeftButton, {}, middle);
    const QPoint end = middle + QPoint(pixels, 0);
    QMouseEvent move(QEvent::MouseMove, end, grip->mapToGlobal(end), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(grip, &move);
    QTest::mouseRelease(grip, Qt::LeftButton, {}, end);
}

/// Counts what the host tells plug-ins.
struct SurveyListener : host::Listener
{
    int changes = 0;
    int closings = 0;
    void markersChanged(const QString &) override { }
    void surveyChanged() override { ++changes; }
    void hostClosing() override { ++closings; }
};

/// A window over a folder of surveys, with settings of its own.
class WorkbenchWindowTest : public QObject
{
protected:
    void setUp()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_asker = ScriptedAsker();
        m_chosenFolder.clear();
        m_chosenFiles.clear();
        QSettings(QStringLiteral("LORVA"), QStringLiteral("workbench")).clear();
        makeWindow();
    }

    void tearDown()
    {
        m_window.reset();
        m_host.reset();
    }

    QString copyOfRealSurvey(const QString &name = QStringLiteral("od-survey"))
    {
        const QString shared = files::sharedFolder(QStringLiteral("od-survey"));
        const QString path = m_folder->filePath(name);
        if (!shared.isEmpty())
            files::copyFolder(shared, path);
        return shared.isEmpty() ? QString() : path;
    }
    QString newSurvey(const QString &name)
    {
        survey::NewSurvey survey;
        survey.name = name;
        const QString path = m_folder->filePath(name);
        return survey::createSurvey(path, survey).ok() ? path : QString();
    }
    void addWell(const QString &survey, const QString &name, double x, double y)
    {
        survey::WellProperties well;
        well.name = name;
        well.x = x;
        well.y = y;
        well.totalDepth = 1000;
        QVERIFY(survey::SurveyStore(survey).addWell(well).ok());
    }
    void makeWindow()
    {
        m_window.reset();
        m_host = std::make_unique<workbench::WorkbenchHost>(QStringLiteral(LORVA_BINARY_DIR "/share/lorva"));
        const workbench::FileChooser chooser{
            [this](QWidget *, const QString &, const QString &) { return m_chosenFolder; },
            [this](QWidget *, const QString &, const QString &, const QString &) { return m_chosenFiles; }};
        m_window = std::make_unique<workbench::WorkbenchWindow>(*m_host, m_asker, chooser);
        m_startSize = m_window->size();
        m_window->resize(1280, 720); // as on a screen larger than the one of tests
        m_host->setWindow(m_window.get(), m_window->utilitiesMenu());
        QVERIFY(showActive(m_window.get()));
    }
    template<class Widget>
    Widget *find(const char *name) const
    {
        return m_window->findChild<Widget *>(QLatin1String(name));
    }
    void trigger(const char *action) const { find<QAction>(action)->trigger(); }
    QAbstractItemModel *table() const { return find<QTableView>("wellsTable")->model(); }
    bool isOverviewShown() const { return find<QWidget>("surveyOverview")->isVisible(); }
    QStringList recentEntries() const
    {
        QStringList texts;
        for (const QAction *action : find<QMenu>("recentMenu")->actions())
            texts.append(action->text());
        return texts;
    }

    IsolatedSettings m_settings;
    QSize m_startSize;
    std::unique_ptr<QTemporaryDir> m_folder;
    ScriptedAsker m_asker;
    std::unique_ptr<workbench::WorkbenchHost> m_host;
    std::unique_ptr<workbench::WorkbenchWindow> m_window;
    QString m_chosenFolder;
    QStringList m_chosenFiles;
};
