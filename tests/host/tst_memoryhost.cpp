#include "hostcontract.h"
#include "support/memoryhost.h"
#include "support/testmain.h"

#include <QDir>
#include <QTemporaryDir>

#include <memory>

/// The tests' own host keeps what a host must keep; otherwise it would prove nothing about the plug-in.
class tst_memoryhost : public HostContract
{
    Q_OBJECT

protected:
    void makeHost() override
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_host = std::make_unique<MemoryHost>();
        m_host->survey = newSurvey("First");
        m_host->dataFolder = QStringLiteral(LORVA_SOURCE_DIR "/icons");
    }
    void destroyHost() override
    {
        m_host.reset();
        m_folder.reset();
    }
    host::Host &host() override { return *m_host; }
    QString addWell(const host::WellHeader &header) override { return m_host->addWell(header); }
    void openOtherSurvey() override
    {
        m_host->storedWells.clear();
        m_host->changeSurvey(newSurvey("Second"));
    }
    QStringList menuTexts() override
    {
        QStringList texts;
        for (const host::MenuAction &action : qAsConst(m_host->actions))
            texts.append(action.text);
        return texts;
    }
    void click(const QString &menuText) override { m_host->trigger(menuTexts().indexOf(menuText)); }
    void damageList() override { m_host->listFails = true; }
    void addHiddenMarker(const QString &, const QString &markerName) override
    {
        m_host->storedWells.first().hiddenMarkers.append(markerName);
    }
    bool isMarkerStored(const QString &, const QString &markerName) override
    {
        return m_host->storedWells.first().hiddenMarkers.contains(markerName);
    }

private:
    QString newSurvey(const QString &name)
    {
        const QString path = m_folder->filePath(name);
        QDir().mkdir(path);
        return path;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MemoryHost> m_host;
};

LORVA_TEST_MAIN(tst_memoryhost)
#include "tst_memoryhost.moc"
