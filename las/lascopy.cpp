#include "las/lascopy.h"

#include "base/numbers.h"
#include "datastore/logcurvedata.h"
#include "host/feet.h"
#include "host/hostrecords.h"
#include "las/resampling.h"

#include <QSet>

#include <algorithm>
#include <cmath>

namespace las {

namespace {

constexpr int columnWidth = 12;
constexpr int flushSize = 1 << 20;
constexpr int mnemonicWidth = 14;

QString oneLine(const QString &text)
{
    return text.simplified();
}

/// A mnemonic ends at a dot, a colon or a blank.
QString mnemonicOf(const QString &name)
{
    QString mnemonic = oneLine(name);
    for (const char c : {'.', ':', ' ', ',', '~', '#'})
        mnemonic.replace(QLatin1Char(c), QLatin1Char('_'));
    return mnemonic;
}

QByteArray line(const QString &mnemonic, const QString &unit, const QString &value, const QString &description)
{
    const QString head = mnemonicOf(mnemonic) + QLatin1Char('.') + oneLine(unit).replace(QLatin1Char(' '), QString());
    return (head.leftJustified(mnemonicWidth) + QLatin1Char(' ') + oneLine(value) + QStringLiteral(" : ")
            + oneLine(description) + QLatin1Char('\n'))
        .toUtf8();
}

bool isDecidedByDepths(const QString &mnemonic)
{
    static const QSet<QString> names{QStringLiteral("STRT"), QStringLiteral("STOP"), QStringLiteral("STEP"),
                                     QStringLiteral("NULL")};
    return names.contains(mnemonic.toUpper());
}

QByteArray itemsOf(const Header &header, QChar section)
{
    QByteArray bytes;
    for (const HeaderItem &item : header.items)
        if (item.section == section && !item.mnemonic.isEmpty()
            && !(section == QLatin1Char('W') && isDecidedByDepths(item.mnemonic)))
            bytes += line(item.mnemonic, item.unit, item.value, item.description);
    return bytes;
}

QString descriptionOf(const Header &header, const QString &mnemonic)
{
    const HeaderItem *item = header.find(QLatin1Char('C'), {mnemonic});
    return item ? item->description : QString();
}

/// The step of even depths, 0 for others.
double stepOf(const QVector<double> &depths)
{
    if (depths.size() < 2)
        return 0;
    const double step = depths.at(1) - depths.at(0);
    for (int i = 2; i < depths.size(); ++i)
        if (std::abs(depths.at(i) - depths.at(i - 1) - step) > stepTolerance)
            return 0;
    return std::round(step / stepTolerance) * stepTolerance;
}

QByteArray headerBytes(const Header &header, const LogSet &set, const QVector<double> &depths)
{
    const QString unit = set.isInFeet ? QStringLiteral("F") : QStringLiteral("M");
    const auto number = [](double value) { return QString::fromLatin1(base::formatPlain(value)); };
    QByteArray bytes = "~Version information\n";
    bytes += line(QStringLiteral("VERS"), {}, QStringLiteral("2.0"), QStringLiteral("LAS 2.0"));
    bytes += line(QStringLiteral("WRAP"), {}, QStringLiteral("NO"), QStringLiteral("One line per depth step"));
    bytes += "~Well information\n";
    bytes += line(QStringLiteral("STRT"), unit, number(depths.first()), QStringLiteral("First depth"));
    bytes += line(QStringLiteral("STOP"), unit, number(depths.last()), QStringLiteral("Last depth"));
    bytes += line(QStringLiteral("STEP"), unit, number(stepOf(depths)), QStringLiteral("Depth step"));
    bytes += line(QStringLiteral("NULL"), {}, number(nullSampleValue), QStringLiteral("Null value"));
    bytes += itemsOf(header, QLatin1Char('W'));
    bytes += "~Curve information\n";
    bytes += line(QStringLiteral("DEPT"), unit, {}, QStringLiteral("Depth"));
    const QStringList names = copiedNames(set);
    for (int i = 0; i < names.size(); ++i)
        bytes += line(names.at(i), set.logs.at(i).unit, {}, descriptionOf(header, set.logs.at(i).mnemonic));
    const QByteArray parameters = itemsOf(header, QLatin1Char('P'));
    if (!parameters.isEmpty())
        bytes += "~Parameter information\n" + parameters;
    return bytes + "~A\n";
}

QVector<double> depthsOf(const LogSet &set)
{
    QVector<double> depths = set.depths;
    const double unit = set.isInFeet ? host::metresPerFoot : 1;
    if (set.metresPerUnit != unit)
        for (double &depth : depths)
            depth *= set.metresPerUnit / unit;
    return depths;
}

} // namespace

QStringList copiedNames(const LogSet &set)
{
    QStringList names;
    QSet<QString> taken{QStringLiteral("DEPT")};
    for (const FileLog &log : set.logs) {
        const QString plain = mnemonicOf(log.name);
        QString name = plain;
        for (int n = 2; taken.contains(name); ++n)
            name = QStringLiteral("%1_%2").arg(plain, QString::number(n));
        taken.insert(name);
        names.append(name);
    }
    return names;
}

base::WriteResult writeLasCopy(const QString &path, const LasCopy &copy, const std::function<bool(int rows)> &goOn)
{
    base::AtomicFileWriter file;
    base::WriteResult result = file.open(path);
    const QVector<double> depths = depthsOf(copy.set);
    QByteArray bytes = headerBytes(copy.header, copy.set, depths);
    const QByteArray null = base::formatPlain(nullSampleValue);
    for (int row = 0; row < depths.size() && result.ok(); ++row) {
        bytes += base::formatPlain(depths.at(row)).rightJustified(columnWidth);
        for (const FileLog &log : copy.set.logs) {
            const float value = log.values.at(row);
            bytes += ' ' + (host::isUndefined(value) ? null : base::formatPlain(value)).rightJustified(columnWidth);
        }
        bytes += '\n';
        if (bytes.size() < flushSize)
            continue;
        if (!goOn(row + 1))
            return result;
        result = file.write(bytes.constData(), bytes.size());
        bytes.clear();
    }
    if (result.ok())
        result = file.write(bytes.constData(), bytes.size());
    return result.ok() && goOn(depths.size()) ? file.commit() : result;
}

QVector<LogSet> joinedSets(const QVector<LogSet> &sets)
{
    QVector<LogSet> joined;
    for (const LogSet &set : sets) {
        const auto same = std::find_if(joined.begin(), joined.end(), [&set](const LogSet &other) {
            return other.metresPerUnit == set.metresPerUnit && other.depths == set.depths;
        });
        if (same == joined.end())
            joined.append(set);
        else
            same->logs += set.logs;
    }
    return joined;
}

} // namespace las
