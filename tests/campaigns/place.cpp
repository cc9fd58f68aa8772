#include "place.h"

#include "base/usersettings.h"
#include "datastore/curvegroups.h"
#include "datastore/curvegrouptable.h"
#include "support/files.h"
#include "survey/surveyfolder.h"
#include "tests/survey/surveyfixture.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>

namespace campaign {

namespace {

const QString surveyName = QStringLiteral("/survey");

QByteArray hash(const void *bytes, int size)
{
    return QCryptographicHash::hash(QByteArray::fromRawData(static_cast<const char *>(bytes), size),
                                    QCryptographicHash::Md5)
        .toHex();
}

bool isHidden(const QString &name)
{
    return name.startsWith(QLatin1String(".lorva-")) || name.contains(QLatin1String("/.lorva-"));
}

QByteArray logText(survey::SurveyStore &store, const QString &key, int index)
{
    const host::LogData log = store.log(key, index).value;
    const int size = log.values.size() * static_cast<int>(sizeof(float));
    return "  log " + log.name.toUtf8() + ' ' + log.unit.toUtf8() + ' ' + hash(log.depths.constData(), size) + ' '
        + hash(log.values.constData(), size) + '\n';
}

QByteArray wellText(survey::SurveyStore &store, const host::WellEntry &well)
{
    const host::Outcome<host::WellHeader> read = store.header(well.key);
    const host::WellHeader &header = read.value;
    QByteArray text = "well " + well.name.toUtf8() + ' ' + read.error.toUtf8();
    for (const double number : {header.x, header.y, static_cast<double>(header.kbElevation),
                                static_cast<double>(header.groundElevation), header.totalDepth})
        text += ' ' + QByteArray::number(number);
    text += '\n';
    const int count = store.logs(well.key).value.size();
    for (int i = 0; i < count; ++i)
        text += logText(store, well.key, i);
    for (const host::Marker &marker : store.markers(well.key).value)
        text += "  marker " + marker.name.toUtf8() + ' ' + QByteArray::number(static_cast<double>(marker.depth)) + ' '
            + marker.color.name().toLatin1() + '\n';
    return text;
}

} // namespace

QByteArray withoutDates(const QByteArray &bytes)
{
    if (bytes.startsWith("%PDF")) {
        const int date = bytes.indexOf("/CreationDate");
        return date < 0 ? bytes : bytes.left(date) + bytes.mid(bytes.indexOf('\n', date));
    }
    if (!bytes.startsWith("dTect V"))
        return bytes;
    QByteArray result;
    int number = 0;
    for (const QByteArray &line : bytes.split('\n'))
        if (++number != 3 && !line.startsWith("#Created.At"))
            result += line + '\n';
    return result;
}

QString namesThatDiffer(const Content &a, const Content &b)
{
    QStringList names;
    for (const QString &name : a.keys() + b.keys())
        if (a.contains(name) != b.contains(name) || a.value(name) != b.value(name))
            names.append(name);
    names.removeDuplicates();
    return names.join(QStringLiteral(", "));
}

bool isMixed(const Content &now, const Content &one, const Content &other)
{
    for (const QString &name : now.keys() + one.keys() + other.keys()) {
        const auto isAsIn = [&](const Content &content) {
            return now.contains(name) == content.contains(name) && now.value(name) == content.value(name);
        };
        if (!isAsIn(one) && !isAsIn(other))
            return false;
    }
    return true;
}

base::BoxButton YesAsker::show(const base::Box &box)
{
    texts.append(box.text);
    return box.buttons.contains(base::BoxButton::Yes) ? base::BoxButton::Yes : base::BoxButton::Ok;
}

Place::Place(const QString &folder)
    : m_folder(folder)
{
    base::keepSettingsIn(folder + QStringLiteral("/settings"));
    CurveGroupTable::instance().clear();
    host.survey = survey();
    host.dataFolder = QStringLiteral(LORVA_SOURCE_DIR "/icons");
    survey::removeSurveyLeftovers(survey());
    wells().setSurveyDirectory(survey());
    data.project.groupNames = curveGroupNames();
    data.project.zoneTypes = zoneTypeNames();
    data.catalogue.build();
    openProject(host, &data.project);
}

void Place::make(const QString &folder)
{
    using namespace survey_fixture;
    const QString wells = folder + QStringLiteral("/survey/WellInfo/");
    files::write(folder + QStringLiteral("/survey/.survey"), header("Survey Info") + "Name: Campaign\n!\n");
    files::write(folder + QStringLiteral("/survey/.omf"),
                 header("Object Management file") + "ID: 0`1\n!\n@100050: WellInfo\n!\n");
    files::write(wells + QStringLiteral(".omf"), wellList({{"A", "a.well"}, {"B", "b.well"}}));
    for (const char *stem : {"a", "b"}) {
        const QString path = wells + QString::fromLatin1(stem);
        files::write(path + QStringLiteral(".well"), wellFile());
        files::write(path + QStringLiteral("^1.wll"), logFile("GR", {100, 1, 101, 2, 102, 3}));
        files::write(path + QStringLiteral("^2.wll"), logFile("RT", {100, 4, 101, 5, 102, 6}));
        files::write(path + QStringLiteral(".wlm"),
                     header("Well Markers") + "Depth-Unit: Meter\n1.Name: M\n1.Depth along hole: 5\n");
    }
    QDir().mkpath(folder + QStringLiteral("/out"));
    QDir().mkpath(folder + QStringLiteral("/settings"));
    const Place made(folder);
}

void Place::copy(const QString &from, const QString &to)
{
    QDir(to).removeRecursively();
    files::copyFolder(from, to);
}

Content Place::content(const QString &folder)
{
    Content all = files::snapshot(folder);
    for (auto entry = all.begin(); entry != all.end();) {
        if (isHidden(entry.key())) {
            entry = all.erase(entry);
            continue;
        }
        *entry = withoutDates(*entry);
        ++entry;
    }
    return all;
}

QStringList Place::leftovers(const QString &folder)
{
    QStringList found;
    for (const QString &name : files::snapshot(folder).keys())
        if (isHidden(name) && !name.contains(QLatin1String(".lorva-deleted/")))
            found.append(name);
    return found;
}

QByteArray Place::wellsAsSeen(const QString &folder)
{
    survey::SurveyStore store(folder + surveyName);
    const host::Outcome<QVector<host::WellEntry>> wells = store.list();
    QByteArray text = wells.error.toUtf8() + '\n';
    for (const host::WellEntry &well : wells.value)
        text += wellText(store, well);
    return text + store.problems().join(QLatin1Char('\n')).toUtf8();
}

Content Place::asSeen(const QString &folder)
{
    Content seen = content(folder);
    const QString wells = QStringLiteral("survey/WellInfo/");
    for (const QString &name : seen.keys())
        if (name.startsWith(wells))
            seen.remove(name);
    seen.insert(wells, wellsAsSeen(folder));
    return seen;
}

} // namespace campaign
