#include "survey/markerfiles.h"

#include "base/threewaymerge.h"
#include "host/feet.h"
#include "survey/markerfile.h"

#include <algorithm>
#include <cerrno>

namespace survey {

namespace {

DepthRange depthsOf(const WellFile &well)
{
    return {static_cast<float>(well.track.first().md), static_cast<float>(well.track.last().md)};
}

} // namespace

host::Outcome<QVector<host::Marker>> MarkerFiles::read(const QString &stem, DepthUnit unit, const Report &report)
{
    const QString path = stem + QStringLiteral(".wlm");
    const FileRead read = readFile(path);
    if (read.errorCode != 0) {
        if (read.errorCode == ENOENT) {
            m_given.insert(stem, {});
            return {};
        }
        const QString error = readErrorText(path, read.errorCode);
        report(path, unreadableText(read.errorCode));
        return {{}, error};
    }
    const host::Outcome<WellFile> well = m_wells.read(stem, report);
    if (!well.ok())
        return {{}, well.error};
    QStringList problems;
    host::Outcome<QVector<host::Marker>> markers = parseMarkerFile(read.bytes, depthsOf(well.value), &problems);
    for (const QString &problem : problems)
        report(path, problem);
    if (!markers.ok()) {
        report(path, markers.error);
        markers.error = QStringLiteral("Cannot read the file %1: %2.").arg(path, markers.error);
    }
    if (unit == DepthUnit::Foot)
        markers.value = host::feetToMetres(markers.value);
    if (markers.ok())
        m_given.insert(stem, markers.value);
    return markers;
}

// The markers to write: those given, with what another program did to the set since it was read here.
host::Outcome<QVector<host::Marker>> MarkerFiles::merged(const QString &stem, const QVector<host::Marker> &given,
                                                         DepthUnit unit, const Report &report)
{
    const auto known = m_given.constFind(stem);
    if (known == m_given.constEnd())
        return {given, {}};
    const QVector<host::Marker> before = *known;
    const host::Outcome<QVector<host::Marker>> now = read(stem, unit, report);
    const auto isSame = [](const host::Marker &a, const host::Marker &b) {
        return a.name == b.name && a.depth == b.depth && a.color.rgb() == b.color.rgb();
    };
    if (!now.ok() || std::equal(before.begin(), before.end(), now.value.begin(), now.value.end(), isSame))
        return {given, {}};
    const auto merged = base::threeWayMerge(before, now.value, given, isSame);
    if (merged.conflicts.isEmpty())
        return {merged.records, {}};
    return {{},
            QStringLiteral("Another program changed the marker \"%1\" meanwhile. Nothing was written.")
                .arg(merged.conflicts.first())};
}

host::Status MarkerFiles::write(const QString &stem, const QVector<host::Marker> &given, DepthUnit unit,
                                const Report &report)
{
    const host::Outcome<QVector<host::Marker>> toWrite = merged(stem, given, unit, report);
    if (!toWrite.ok())
        return {toWrite.error};
    const QVector<host::Marker> &markers = toWrite.value;
    const host::Outcome<WellFile> well = m_wells.read(stem, report);
    if (!well.ok())
        return {well.error};
    const QString path = stem + QStringLiteral(".wlm");
    const FileRead old = readFile(path);
    if (old.errorCode != 0 && old.errorCode != ENOENT)
        return {readErrorText(path, old.errorCode)};
    const DepthRange track = depthsOf(well.value);
    host::Outcome<QVector<host::Marker>> stored;
    if (old.errorCode == 0)
        stored = parseMarkerFile(old.bytes, track);
    if (!stored.ok())
        return {QStringLiteral("The file %1 is no list of markers: %2. It was not written over.")
                    .arg(path, stored.error)};
    const base::WriteResult result = base::writeFileAtomically(
        path,
        markerFileBytes(unit == DepthUnit::Foot ? host::metresToFeet(markers, stored.value) : markers,
                        unitOf(well.value, unit), old.bytes, track));
    if (!result.ok())
        return {writeErrorText(path, result.error)};
    if (m_given.contains(stem))
        (void)read(stem, unit, report); // this is what a further change begins with
    return {};
}

} // namespace survey
