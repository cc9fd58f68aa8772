#pragma once

#include "base/safename.h"
#include "datastore/curvegroups.h"
#include "datastore/wellscatalogue.h"

#include <QFile>
#include <QMap>

/// The default-logs pass as it is described, step by step, reading and writing files for every single log.
class LiteralPass
{
public:
    LiteralPass(const QString &folder, const WellsCatalogue &catalogue)
        : m_folder(folder)
        , m_catalogue(catalogue)
    {
    }

    void run()
    {
        readTable();
        for (int well = 0; well < m_catalogue.wellCount(); ++well) {
            for (int log = 0; log < m_catalogue.logNames(well).size(); ++log) {
                const QString name = m_catalogue.logNames(well).at(log);
                if (groupOf(name) == "Others")
                    m_table.insert(name, m_catalogue.curveGroup(well, log));
                if (groupOf(name) != "None") // a group that has no file
                    addMnemonic(groupOf(name), name);
            }
        }
        for (int well = 0; well < m_catalogue.wellCount(); ++well)
            writeDefaults(well);
        QByteArray bytes;
        for (auto entry = m_table.begin(); entry != m_table.end(); ++entry)
            bytes += entry.key().toUtf8() + " | " + entry.value().toUtf8() + '\n';
        write("CurveGroups/CurveGroupTable.txt", bytes);
    }

private:
    QString groupOf(const QString &log) const
    {
        const QString group = m_table.value(log);
        return group.isEmpty() ? "Others" : group; // an entry without a group counts as absent
    }

    QStringList lines(const QString &file) const
    {
        QFile input(m_folder + '/' + file);
        QStringList result;
        if (input.open(QIODevice::ReadOnly))
            while (!input.atEnd())
                result.append(QString::fromUtf8(input.readLine()).remove('\n'));
        return result;
    }

    void write(const QString &file, const QByteArray &bytes) const
    {
        QFile output(m_folder + '/' + file);
        if (output.open(QIODevice::WriteOnly))
            output.write(bytes);
    }

    void readTable()
    {
        for (const QString &line : lines("CurveGroups/CurveGroupTable.txt")) {
            const QStringList parts = line.split('|');
            if (parts.size() >= 2)
                m_table.insert(parts.at(0).trimmed(), parts.at(1).trimmed());
        }
    }

    void addMnemonic(const QString &group, const QString &log) const
    {
        const QString file = "CurveGroups/"
            + (group == "CurveGroupTable" ? "%43urveGroupTable" : base::fileNameFor(group, 4)) + ".txt";
        QStringList names;
        for (const QString &line : lines(file))
            names.append(line.trimmed());
        if (names.contains(log.trimmed()))
            return;
        names.append(log.trimmed());
        QByteArray bytes;
        for (const QString &name : names)
            bytes += name.toUtf8() + '\n';
        write(file, bytes);
    }

    void writeDefaults(int well) const
    {
        const QString name = m_catalogue.wellNames().at(well);
        const QString file = "DefaultLogs/" + base::fileNameFor(name, 4) + ".txt";
        if (QFile::exists(m_folder + '/' + file))
            return;
        QByteArray bytes = name.toUtf8() + '\n';
        QStringList copy = curveGroupNames();
        for (const QString &log : m_catalogue.logNames(well)) {
            const QString group = groupOf(log);
            if (!copy.contains(group, Qt::CaseInsensitive))
                continue;
            bytes += group.toUtf8() + '|' + log.toUtf8() + '\n';
            for (int i = copy.size() - 1; i >= 0; --i)
                if (copy.at(i).toLower() == group.toLower())
                    copy.removeAt(i);
        }
        write(file, bytes);
    }

    QString m_folder;
    const WellsCatalogue &m_catalogue;
    QMap<QString, QString> m_table;
};
