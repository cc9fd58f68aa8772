#include "programs/batch/calibrationpoints.h"

#include "programs/batch/damage.h"
#include "programs/batch/session.h"

namespace batch {

QString pointsOfWell(const QString &wellName, const QString &group)
{
    return QStringLiteral("Calibration points of %1, %2").arg(wellName, group);
}

CalibrationRecord readPoints(Session &session, const QString &wellName, const QString &group, QStringList *failures)
{
    const CalibrationRecord points = readCalibration(session.projectFolder(), wellName, group, session.asker());
    session.asker().takeWarnings(); // the window's words name no file
    for (const QString &problem : Damage(session).ofPoints(wellName, group))
        failures->append(pointsOfWell(wellName, group) + QStringLiteral(": ") + problem);
    return points;
}

} // namespace batch
