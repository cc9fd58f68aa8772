#include "programs/batch/curvechoice.h"

#include "datastore/curvegroupassignment.h"
#include "datastore/curvegroups.h"
#include "datastore/unitclassification.h"
#include "las/resampling.h"
#include "las/showntext.h"
#include "programs/batch/arguments.h"

namespace batch {

namespace {

QHash<QString, QString> pairs(const Arguments &arguments, const char *option)
{
    QHash<QString, QString> result;
    for (const QString &pair : arguments.values(QString::fromLatin1(option)))
        result.insert(pair.section(QLatin1Char('='), 0, 0), pair.section(QLatin1Char('='), 1));
    return result;
}

} // namespace

CurveChoice::CurveChoice(const Arguments &arguments)
    : curves(arguments.values(QStringLiteral("--curves")))
    , groups(pairs(arguments, "--map"))
    , names(pairs(arguments, "--rename"))
    , convertsFeet(arguments.has(QStringLiteral("--convert-feet")))
{
    for (QString &group : groups)
        group = asListed(curveGroupNames(), group);
    options.isResampling = arguments.has(QStringLiteral("--interval"));
    options.interval = las::floatIntervalFromText(arguments.value(QStringLiteral("--interval")));
}

QString CurveChoice::groupOf(const QString &mnemonic, QString unit, CurveGroupFinder &known) const
{
    const QString given = groups.value(mnemonic);
    const QString group = given.isEmpty() ? known.group(mnemonic)
        : given == QLatin1String("None")  ? known.group(nameOf(mnemonic))
                                          : given;
    return group == QLatin1String("Others") ? curveGroupOfUnit(unit) : group;
}

QString CurveChoice::groupNotice(const QString &mnemonic, const QString &group) const
{
    const QString given = groups.value(mnemonic, group);
    return given == group
        ? QString()
        : QStringLiteral("%1 goes into the group %2, not into %3: what has no group or is one of Others "
                         "is grouped by name and unit.")
              .arg(las::shortened(mnemonic), group, given);
}

QString sameNameProblem(const QString &firstCurve, const QString &secondCurve, const QString &logName)
{
    return QStringLiteral(
               "the curves %1 and %2 would both become the log \"%3\"; --rename gives other names, --curves "
               "leaves one out.")
        .arg(las::shortened(firstCurve), las::shortened(secondCurve), las::shortened(logName));
}

} // namespace batch
