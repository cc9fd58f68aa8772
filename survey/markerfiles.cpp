#include "survey/markerfiles.h"

#include "base/threewaymerge.h"
#include "host/feet.h"

#include <algorithm>
#include <cerrno>

namespace survey {

DepthRange trackDepths(const WellFile &well)
{
    return {static_cast<float>(well.track.first().md), static_cast<float>(well.track.last().md)};
}

host::Outcome<QVector<host::Marker>> MarkerFiles::read(const QString &stem, DepthUnit unit, const Report &report,
                                                       const std::optional<DepthRange> &track)
{
    const FileRead file = readFile(stem + QStringLiteral(".wlm"));
    if (file.errorCode != 0 || track)
        return giveOut(stem, {file, track.value_or(DepthRange()), unit}, report);
    const host::Outcome<WellFile> well = m_wells.read(stem, report);
    if (!well.ok())
        return {{}, well.error};
    return giveOut(stem, {file, trackDepths(well.value), unit}, report);
}

host::Outcome<QVector<host::Marker>> MarkerFiles::giveOut(const QString &stem, const Stored &stored,
                                                          const Report &report)
{
    const QString path = stem + QStringLiteral(".wlm");
    if (stored.file.errorCode == ENOENT) {
        m_given.insert(stem, {});
        return {};
    }
    if (stored.file.errorCode != 0) {
        report(path, unreadableText(stored.file.errorCode));
        return {{}, readErrorText(path, stored.file.errorCode)};
    }
    QStringList problems;
    host::Outcome<QVector<host::Marker>> markers = parseMarkerFile(stored.file.bytes, stored.track, &problems);
    for (const QString &problem : problems)
        report(path, problem);
    if (!markers.ok()) {
        report(path, markers.error);
        markers.error = QStringLiteral("Cannot read the file %1: %2.").arg(path, markers.error);
    }
    if (stored.unit == DepthUnit::Foot)
        markers.value = host::feetToMetres(markers.value);
    if (markers.ok())
        m_given.insert(stem, markers.value);
    return markers;
}

// The markers to write: those given, with what another program did to the set since it was read here.
host::Outcome<QVector<host::Marker>> MarkerFiles::merged(const QString &stem, const QVector<host::Marker> &given,
                                                         const Stored &stored, const Report &report)
{
    const auto known = m_given.constFind(stem);
    if (known == m_given.constEnd())
        return {given, {}};
    const QVector<host::Marker> before = *known;
    const host::Outcome<QVector<host::Marker>> now = giveOut(stem, stored, report);
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
    const QString path = stem + QStringLiteral(".wlm");
    const host::Outcome<WellFile> well = m_wells.read(stem, report);
    if (!well.ok())
        return {well.error};
    const Stored before{readFile(path), trackDepths(well.value), unit};
    const host::Outcome<QVector<host::Marker>> toWrite = merged(stem, given, before, report);
    if (!toWrite.ok())
        return {toWrite.error};
    const QVector<host::Marker> &markers = toWrite.value;
    const FileRead &old = before.file;
    if (old.errorCode != 0 && old.errorCode != ENOENT)
        return {readErrorText(path, old.errorCode)};
    host::Outcome<QVector<host::Marker>> stored;
    if (old.errorCode == 0)
        stored = parseMarkerFile(old.bytes, before.track);
    if (!stored.ok())
        return {QStringLiteral("The file %1 is no list of markers: %2. It was not written over.")
                    .arg(path, stored.error)};
    const QByteArray bytes =
        markerFileBytes(unit == DepthUnit::Foot ? host::metresToFeet(markers, stored.value) : markers,
                        unitOf(well.value, unit), old.bytes, before.track);
    const base::WriteResult result = base::writeFileAtomically(path, bytes);
    if (!result.ok())
        return {writeErrorText(path, result.error)};
    if (m_given.contains(stem)) { // this is what a further change begins with
        FileRead written;
        written.bytes = bytes;
        (void)giveOut(stem, {written, before.track, unit}, report);
    }
    return {};
}

} // namespace survey
