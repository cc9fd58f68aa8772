#include "survey/wellmaker.h"

#include "base/numbers.h"
#include "las/logreader.h"

#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <cmath>

namespace survey {

namespace {

constexpr double stepsPerUnit = 10000;
constexpr double worthTelling = 0.01; // what single precision adds is not

/// Collects the logs of one well from its files.
class LogCollector
{
public:
    LogCollector(DepthUnit unit, int fileCount)
        : m_unit(unit)
        , m_fileCount(fileCount)
    {
    }

    /// Gives why the file cannot be read, a sentence.
    QString add(const QString &path, const QByteArray &codec);

    const QVector<host::LogData> &logs() const { return m_logs; }
    double deepestM() const { return m_deepestM; }
    QStringList notices() const { return m_notices; }

private:
    struct Origin
    {
        QString mnemonic;
        QString file;
    };
    /// From the file's depths to the survey's: 1 for feet in a survey in feet.
    double factor(const las::LogSet &set) const
    {
        return set.metresPerUnit / (m_unit == DepthUnit::Foot ? host::metresPerFoot : 1);
    }
    void addSet(const las::LogSet &set, const QString &file);
    void addLog(const host::LogData &log, const Origin &origin);
    QString freeName(const QString &name, const QString &mnemonic) const;
    void note(const QString &file, const QString &sentence)
    {
        m_notices.append(m_fileCount > 1 ? file + QStringLiteral(": ") + sentence : sentence);
    }

    DepthUnit m_unit;
    int m_fileCount;
    QVector<host::LogData> m_logs;
    QVector<Origin> m_origins; ///< of the logs
    QHash<QString, int> m_indexOfName;
    double m_deepestM = -std::numeric_limits<double>::infinity();
    QStringList m_notices;
};

QString LogCollector::add(const QString &path, const QByteArray &codec)
{
    const las::LogFile file = las::readLogs(path, codec);
    if (!file.error.isEmpty())
        return file.error;
    const QString name = QFileInfo(path).fileName();
    for (const QString &notice : file.notices)
        note(name, notice);
    for (const las::LogSet &set : file.sets) {
        const double deepestM = set.deepest() * set.metresPerUnit;
        if (deepestM > deepestPossibleM) {
            note(name,
                 QStringLiteral("A section with samples down to %1 m is left out: no well is so deep.")
                     .arg(QString::fromLatin1(base::formatGeneral(deepestM))));
            continue;
        }
        // Hosts keep and give out the depth in single precision, which may lie below the number in the file.
        const auto stored = static_cast<float>(set.deepest() * factor(set));
        const float givenOut = m_unit == DepthUnit::Foot ? host::feetToMetres(stored) : stored;
        m_deepestM = std::max({m_deepestM, deepestM, static_cast<double>(givenOut)});
        addSet(set, name);
    }
    return {};
}

void LogCollector::addSet(const las::LogSet &set, const QString &file)
{
    const bool isFalling = set.depths.size() > 1 && set.depths.first() > set.depths.last();
    QVector<float> depths;
    depths.reserve(set.depths.size());
    for (const double depth : set.depths)
        depths.append(static_cast<float>(depth * factor(set)));
    if (isFalling)
        std::reverse(depths.begin(), depths.end());
    for (const las::FileLog &log : set.logs) {
        host::LogData data{log.name, log.unit, depths, log.values};
        if (isFalling)
            std::reverse(data.values.begin(), data.values.end());
        addLog(data, {log.mnemonic, file});
    }
}

void LogCollector::addLog(const host::LogData &log, const Origin &origin)
{
    for (int i = 0; i < m_logs.size(); ++i) {
        const host::LogData &other = m_logs.at(i);
        if (m_origins.at(i).mnemonic != origin.mnemonic || other.unit != log.unit || other.depths != log.depths
            || other.values != log.values)
            continue;
        note(origin.file,
             m_origins.at(i).file == origin.file
                 ? QStringLiteral("%1 is left out: it repeats %2.").arg(log.name, other.name)
                 : QStringLiteral("%1 is left out: it repeats that of %2.").arg(log.name, m_origins.at(i).file));
        return;
    }
    host::LogData named = log;
    named.name = freeName(log.name, origin.mnemonic);
    if (named.name != log.name)
        note(origin.file,
             QStringLiteral("%1 becomes %2: %3 has another log of that name.")
                 .arg(log.name, named.name, m_origins.at(m_indexOfName.value(log.name)).file));
    m_indexOfName.insert(named.name, m_logs.size());
    m_logs.append(named);
    m_origins.append(origin);
}

QString LogCollector::freeName(const QString &name, const QString &mnemonic) const
{
    QString free = name;
    for (int n = 2; m_indexOfName.contains(free); ++n)
        free = QStringLiteral("%1_%2").arg(mnemonic.isEmpty() ? name : mnemonic, QString::number(n));
    return free;
}

QString lengthText(double length, DepthUnit unit)
{
    return QString::fromLatin1(base::formatWritten(length)) + QLatin1Char(' ') + symbol(unit);
}

} // namespace

QString roundedUpText(double metres, DepthUnit unit)
{
    const auto endsAbove = [metres, unit](double steps) {
        const auto stored = static_cast<float>(steps / stepsPerUnit);
        return (unit == DepthUnit::Foot ? host::feetToMetres(stored) : stored) < static_cast<float>(metres);
    };
    const double depth = fromMetres(metres, unit);
    double steps = std::round(depth * stepsPerUnit);
    while (steps / stepsPerUnit < depth || endsAbove(steps))
        ++steps;
    return QString::fromLatin1(base::formatWritten(steps / stepsPerUnit));
}

MadeWell makeWell(SurveyStore &store, const WellOrder &order)
{
    MadeWell made;
    made.name = order.properties.name;
    made.files = order.files;
    const DepthUnit unit = store.depthUnit();
    WellProperties properties = order.properties;
    LogCollector collector(unit, order.files.size());
    for (const QString &file : order.files) {
        if (!order.withLogs)
            break;
        made.error = collector.add(file, order.codec);
        if (!made.error.isEmpty())
            return made;
    }
    made.notices = collector.notices();
    if (std::isfinite(collector.deepestM())) {
        const double deepest = base::parseNumber(roundedUpText(collector.deepestM(), unit)).value_or(0);
        if (deepest > properties.totalDepth) {
            if (deepest - properties.totalDepth > worthTelling)
                made.notices.append(QStringLiteral("The total depth is %1 instead of %2: there are samples so deep.")
                                        .arg(lengthText(deepest, unit), lengthText(properties.totalDepth, unit)));
            properties.totalDepth = deepest;
        }
    }
    QVector<host::LogData> logs = collector.logs();
    if (order.changeLogs)
        made.error = order.changeLogs(&logs, &made.notices);
    if (!made.error.isEmpty())
        return made;
    if (order.isTrial) {
        made.logCount = logs.size();
        return made;
    }
    const host::Outcome<QString> added = store.addWell(properties, logs);
    made.key = added.value;
    made.error = added.error;
    made.logCount = added.ok() ? logs.size() : 0;
    return made;
}

} // namespace survey
