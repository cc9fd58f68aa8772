#include "datastore/logrun.h"

#include "base/asker.h"
#include "datastore/storedsample.h"
#include "datastore/textfields.h"

namespace {

host::LogData hostLog(const QString &name, const LogCurveData &curve)
{
    host::LogData log;
    log.name = name;
    log.unit = curve.unit;
    const int count = qMin(curve.depths.size(), curve.values.size());
    log.depths.reserve(count);
    log.values.reserve(count);
    for (int i = 0; i < count; ++i) {
        const float depth = storedSample(curve.depths.at(i));
        if (!std::isfinite(depth) || host::isUndefined(depth))
            continue;
        const double value = curve.values.at(i);
        log.depths.append(depth);
        log.values.append(isStoredAs(value, nullSampleValue) ? host::undefinedValue : storedSample(value));
    }
    return log;
}

} // namespace

LogRun::LogRun(host::Wells &wells, WellsCatalogue &catalogue, base::Asker &asker, const QString &wellKey)
    : m_wells(wells)
    , m_catalogue(catalogue)
    , m_asker(asker)
    , m_wellKey(wellKey)
{
}

bool LogRun::isTaken(const QString &logName)
{
    const int well = m_catalogue.indexOfKey(m_wellKey);
    if (well < 0)
        return false;
    if (!m_isListed) {
        m_isListed = true;
        for (const QString &name : m_catalogue.logNames(well))
            m_logNames.insert(name);
        for (const host::LogInfo &log : m_wells.logs(m_wellKey).value)
            m_logNames.insert(log.name);
    }
    return m_logNames.contains(logName);
}

LogOutcome LogRun::write(const LogCurveData &curve)
{
    m_error.clear();
    QString logName = textfields::trimmedLine(curve.logName);
    logName.replace(QChar(0), QLatin1Char(' ')); // it would end the name for the host
    if (isTaken(logName)) {
        const base::Box question{
            base::BoxIcon::Question,
            QStringLiteral("Writing Well Logs"),
            QStringLiteral("A log with this name %1 is already exists.\n"
                           "Would you like to overwrite this existing log ?")
                .arg(logName),
            {base::BoxButton::No, base::BoxButton::Yes},
        };
        if (m_asker.show(question) != base::BoxButton::Yes)
            return LogOutcome::Declined;
    }
    m_isReadable = m_isReadable || (m_catalogue.indexOfKey(m_wellKey) >= 0 && m_wells.header(m_wellKey).ok());
    if (!m_isReadable)
        return LogOutcome::NoWell;
    m_wasTried = true;
    const host::Status written = m_wells.writeLog(m_wellKey, hostLog(logName, curve));
    m_error = written.error;
    if (!written.ok())
        return LogOutcome::Failed;
    m_wasWritten = true;
    m_logNames.insert(logName);
    return LogOutcome::Written;
}

void LogRun::reload()
{
    if (m_wasTried)
        m_wells.reload(m_wellKey);
    m_wasTried = false;
}

void LogRun::finish()
{
    reload();
    const int well = m_catalogue.indexOfKey(m_wellKey);
    if (m_wasWritten && well >= 0)
        m_catalogue.refreshLogNames(well);
    m_wasWritten = false;
}
