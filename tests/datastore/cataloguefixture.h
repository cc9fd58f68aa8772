#pragma once

#include "datastore/wellscatalogue.h"
#include "support/memoryhost.h"
#include "support/scriptedasker.h"

#include <QTest>

inline const char selectedWellError[] = "Cannot get data for the selected well";
inline const char groupError[] = "Cannot get data for the selected well:";

inline host::WellHeader wellNamed(const QString &name)
{
    host::WellHeader header;
    header.name = name;
    return header;
}

inline host::LogData logOf(const QString &name, const QString &unit, const QVector<float> &values)
{
    host::LogData log{name, unit, {}, values};
    for (int i = 0; i < values.size(); ++i)
        log.depths.append(100.0f + 0.5f * static_cast<float>(i));
    return log;
}

/// A host in memory. Its wells may lose their own records, and have logs and markers all the same.
class RecordHost : public MemoryHost
{
public:
    host::Outcome<host::WellHeader> header(const QString &key) override
    {
        return hasRecords ? MemoryHost::header(key) : host::Outcome<host::WellHeader>{{}, key};
    }
    bool hasRecords = true;
};

/// A catalogue over such a host.
class CatalogueTest : public QObject
{
protected:
    void setUp()
    {
        m_host = std::make_unique<RecordHost>();
        m_asker = ScriptedAsker();
        m_catalogue = std::make_unique<WellsCatalogue>(*m_host, m_asker,
                                                       [this](const QString &text) { m_host->showError(text); });
    }

    MemoryHost::Well *add(const QString &name) { return m_host->find(m_host->addWell(wellNamed(name))); }

    MemoryHost::Well *at(const QString &name)
    {
        for (MemoryHost::Well &well : m_host->storedWells)
            if (well.header.name == name)
                return &well;
        qFatal("no such well");
        return nullptr;
    }

    QString keyOf(const QString &name) { return at(name)->key; }

    void expectError(const QString &text)
    {
        QCOMPARE(m_host->errors, QStringList{text});
        QVERIFY(m_asker.boxes.isEmpty());
        m_host->errors.clear();
    }

    void expectSilence()
    {
        QCOMPARE(m_host->errors, QStringList());
        QVERIFY(m_asker.boxes.isEmpty());
    }

    std::unique_ptr<RecordHost> m_host;
    ScriptedAsker m_asker;
    std::unique_ptr<WellsCatalogue> m_catalogue;
};
