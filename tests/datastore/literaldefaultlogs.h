#pragma once

#include "base/safename.h"
#include "datastore/curvegroups.h"
#include "datastore/wellscatalogue.h"

#include <QFile>
#include <QMap>

/// The default-logs pass as it is described, step by step, reading and writing files for every single log. Units and
/// groups are looked up here once more, not asked of the code under test.
class LiteralPass
{
public:
    LiteralPass(const QString &folder, const WellsCatalogue &catalogue, host::Wells &wells)
        : m_folder(folder)
        , m_catalogue(catalogue)
        , m_wells(wells)
    {
    }

    void run()
    {
        readTable();
        for (int well = 0; well < m_catalogue.wellCount(); ++well) {
            for (int log = 0; log < m_catalogue.logNames(well).size(); ++log) {
                const QString name = m_catalogue.logNames(well).at(log);
                if (groupOf(name) == "Others")
                    m_table.insert(keyOf(name),
                                   groupOfUnit(m_wells.logs(m_catalogue.wellKey(well)).value.at(log).unit));
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
    // A log name as a line of the table can hold it.
    static QString keyOf(QString log)
    {
        return log.replace('\n', ' ').replace('\r', ' ').replace('|', QChar(0xA6)).trimmed();
    }

    static QString groupOfUnit(const QString &unit)
    {
        static const QMap<QString, QString> groups{
            {"gapi", "Gamma"}, {"api", "Gamma"}, {"us/ft", "Sonic"}, {"ohmm", "Resistivity"}, {"g/cc", "Density"},
            {"%", "Porosity"}, {"mv", "Sp"},     {"in", "Caliper"},  {"m", "Depth"},          {"inches", "Caliper"}};
        return groups.value(unit.toLower(), "Others");
    }

    QString groupOf(const QString &log) const
    {
        const QString group = m_table.value(keyOf(log));
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

    void addMnemonic(const QString &group, QString log) const
    {
        log.replace('\n', ' ').replace('\r', ' ');
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
        // It would stay empty for ever: the file of a name is made when the wells of that name can be read.
        for (int other = 0; other < m_catalogue.wellCount(); ++other)
            if (m_catalogue.wellNames().at(other) == name && !m_wells.header(m_catalogue.wellKey(other)).ok())
                return;
        QByteArray bytes = name.toUtf8() + '\n';
        QStringList copy = curveGroupNames();
        for (const QString &log : m_catalogue.logNames(well)) {
            const QString group = groupOf(log);
            if (!copy.contains(group, Qt::CaseInsensitive))
                continue;
            bytes += group.toUtf8() + '|' + keyOf(log).toUtf8() + '\n';
            for (int i = copy.size() - 1; i >= 0; --i)
                if (copy.at(i).toLower() == group.toLower())
                    copy.removeAt(i);
        }
        write(file, bytes);
    }

    QString m_folder;
    const WellsCatalogue &m_catalogue;
    host::Wells &m_wells;
    QMap<QString, QString> m_table;
};
