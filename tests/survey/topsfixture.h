#pragma once

#include "survey/topsplan.h"

#include <QHash>

/// Wells as a plan sees them, without a disk; what it reads is counted.
class FakeWells
{
public:
    void add(const QString &name, const QString &uwi = {}, const QVector<host::Marker> &markers = {},
             double totalDepthM = 2000)
    {
        const QString key = QStringLiteral("key %1").arg(m_wells.size());
        m_wells.append({name, key});
        survey::WellHead head;
        head.header.totalDepth = totalDepthM;
        head.uwi = uwi;
        m_heads.insert(key, head);
        m_markers.insert(key, markers);
    }
    survey::TopsPlan plan(survey::DepthUnit unit = survey::DepthUnit::Metre)
    {
        return survey::TopsPlan(
            m_wells, unit,
            {[this](const QString &key) -> host::Outcome<survey::WellHead> {
                 ++headReads[key];
                 return {m_heads.value(key), unreadable.value(key)};
             },
             [this](const QString &key, const survey::WellHead &) -> host::Outcome<QVector<host::Marker>> {
                 ++markerReads[key];
                 return {m_markers.value(key), badMarkers.value(key)};
             }});
    }
    QString key(int well) const { return m_wells.at(well).key; }

    QHash<QString, int> headReads;
    QHash<QString, int> markerReads;
    QHash<QString, QString> unreadable; ///< errors by key
    QHash<QString, QString> badMarkers;

private:
    QVector<host::WellEntry> m_wells;
    QHash<QString, survey::WellHead> m_heads;
    QHash<QString, QVector<host::Marker>> m_markers;
};

inline survey::TopsInput input(const QString &path, const QByteArray &bytes)
{
    return {path, survey::parseTops(bytes)};
}
