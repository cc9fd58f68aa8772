#include "support/memoryhost.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace {

QString unreadable(const QString &key)
{
    return QStringLiteral("The well %1 cannot be read.").arg(key);
}

// Hosts sort by the upper-cased bytes, ASCII letters only.
QByteArray sortKey(const QString &name)
{
    QByteArray bytes = name.toUtf8();
    for (char &c : bytes)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return bytes;
}

host::LogData withoutUndefinedEnds(const host::LogData &log)
{
    int begin = 0;
    int end = log.values.size();
    while (begin < end && host::isUndefined(log.values.at(begin)))
        ++begin;
    while (end > begin && host::isUndefined(log.values.at(end - 1)))
        --end;
    return {log.name, log.unit, log.depths.mid(begin, end - begin), log.values.mid(begin, end - begin)};
}

} // namespace

QString MemoryHost::addWell(const host::WellHeader &header)
{
    Well well;
    well.key = QStringLiteral("100050.%1").arg(++m_lastNumber);
    well.header = header;
    storedWells.append(well);
    return well.key;
}

MemoryHost::Well *MemoryHost::find(const QString &key)
{
    for (Well &well : storedWells)
        if (well.key == key)
            return &well;
    return nullptr;
}

MemoryHost::Well *MemoryHost::readable(const QString &key)
{
    Well *well = find(key);
    return well && !well->isUnreadable ? well : nullptr;
}

void MemoryHost::changeSurvey(const QString &directory)
{
    survey = directory;
    tell([](host::Listener *listener) { listener->surveyChanged(); });
}

void MemoryHost::announceClosing()
{
    tell([](host::Listener *listener) { listener->hostClosing(); });
}

// A listener may take itself or another one out while it is told.
template<class Call>
void MemoryHost::tell(const Call &call)
{
    const QVector<host::Listener *> told = listeners;
    for (host::Listener *listener : told)
        if (listeners.contains(listener))
            call(listener);
}

void MemoryHost::addListener(host::Listener *listener)
{
    if (!listeners.contains(listener))
        listeners.append(listener);
}

void MemoryHost::trigger(int index)
{
    const host::MenuAction action = actions.at(index);
    action.triggered();
}

QString MemoryHost::surveyName() const
{
    return QFileInfo(survey).fileName();
}

QIcon MemoryHost::icon(const QString &fileName) const
{
    const QString path = dataFolder + QStringLiteral("/icons.Default/") + fileName;
    return QFileInfo(path).isFile() ? QIcon(path) : QIcon();
}

int MemoryHost::appendAction(const host::MenuAction &action)
{
    actions.append(action);
    m_actionIds.append(++m_lastActionId);
    return m_lastActionId;
}

void MemoryHost::removeAction(int id)
{
    const int index = m_actionIds.indexOf(id);
    if (index < 0)
        return;
    m_actionIds.removeAt(index);
    actions.removeAt(index);
}

host::Outcome<QVector<host::WellEntry>> MemoryHost::list()
{
    if (listFails)
        return {{}, QStringLiteral("The list of wells cannot be read.")};
    QVector<host::WellEntry> entries;
    for (const Well &well : qAsConst(storedWells))
        entries.append({well.header.name, well.key});
    std::stable_sort(entries.begin(), entries.end(), [](const host::WellEntry &a, const host::WellEntry &b) {
        return sortKey(a.name) < sortKey(b.name);
    });
    return {entries, {}};
}

host::Outcome<host::WellHeader> MemoryHost::header(const QString &key)
{
    const Well *well = readable(key);
    return well ? host::Outcome<host::WellHeader>{well->header, {}}
                : host::Outcome<host::WellHeader>{{}, unreadable(key)};
}

host::Outcome<QVector<host::LogInfo>> MemoryHost::logs(const QString &key)
{
    const Well *well = readable(key);
    if (!well)
        return {{}, unreadable(key)};
    QVector<host::LogInfo> infos;
    for (const host::LogData &log : well->logs)
        infos.append({log.name, log.unit});
    return {infos, {}};
}

host::Outcome<host::LogData> MemoryHost::log(const QString &key, int index)
{
    const Well *well = readable(key);
    if (!well || index < 0 || index >= well->logs.size())
        return {{}, unreadable(key)};
    return {well->logs.at(index), {}};
}

host::Outcome<QVector<host::Marker>> MemoryHost::markers(const QString &key)
{
    const Well *well = readable(key);
    return well ? host::Outcome<QVector<host::Marker>>{well->markers, {}}
                : host::Outcome<QVector<host::Marker>>{{}, unreadable(key)};
}

host::Status MemoryHost::writeLog(const QString &key, const host::LogData &log)
{
    Well *well = readable(key);
    if (!well)
        return {unreadable(key)};
    if (log.name.isEmpty() || log.depths.size() != log.values.size())
        return {QStringLiteral("The log \"%1\" is no log.").arg(log.name)};
    host::LogData sorted = log;
    host::sortByDepth(&sorted);
    const host::LogData kept = withoutUndefinedEnds(sorted);
    if (kept.values.isEmpty())
        return {QStringLiteral("The log \"%1\" has no defined sample.").arg(log.name)};
    for (host::LogData &old : well->logs) {
        if (old.name == log.name) {
            old = kept;
            return {};
        }
    }
    well->logs.append(kept);
    return {};
}

host::Status MemoryHost::writeMarkers(const QString &key, const QVector<host::Marker> &markers)
{
    Well *well = readable(key);
    if (!well)
        return {unreadable(key)};
    if (markerWritesFail)
        return {QStringLiteral("The disk is full.")};
    QVector<host::Marker> kept;
    QSet<QString> names;
    for (const host::Marker &marker : markers) {
        if (names.contains(marker.name))
            continue;
        names.insert(marker.name);
        kept.append(marker);
    }
    std::stable_sort(kept.begin(), kept.end(),
                     [](const host::Marker &a, const host::Marker &b) { return a.depth < b.depth; });
    well->markers = kept;
    well->hiddenMarkers.clear();
    tell([&key](host::Listener *listener) { listener->markersChanged(key); });
    return {};
}

host::Outcome<QStringList> MemoryHost::markersLostByWriting(const QString &key, const QVector<host::Marker> &markers)
{
    const Well *well = readable(key);
    if (!well)
        return {{}, unreadable(key)};
    QStringList lost = well->hiddenMarkers;
    for (const host::Marker &marker : markers)
        lost.removeAll(marker.name);
    return {lost, {}};
}
