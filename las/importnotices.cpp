#include "las/importnotices.h"

#include "base/numbers.h"
#include "las/depthname.h"
#include "las/feet.h"
#include "las/showntext.h"

#include <QSet>

#include <algorithm>

namespace las {

namespace {

constexpr int longestLine = 64 * 1024; // of titles and data lines, as of header lines
constexpr int mostNames = 5; // in one notice

/// "name, name, name and 7 more".
QString enumeration(const QStringList &names)
{
    QStringList shown;
    for (const QString &name : names.mid(0, mostNames))
        shown.append(name.isEmpty() ? QStringLiteral("(no name)") : shortened(name));
    const QString text = shown.join(QStringLiteral(", "));
    return names.size() > mostNames ? text + QStringLiteral(" and %1 more").arg(names.size() - mostNames) : text;
}

QString feet(const WellInfo &file, const QString &whatIsDone)
{
    if (!metresPerFeetUnit(file.depthUnit))
        return {};
    const bool isTenthOfInch = file.depthUnit.endsWith(QLatin1String("IN"), Qt::CaseInsensitive);
    return (isTenthOfInch ? QStringLiteral("Depths of this file are in tenths of an inch (.1IN).")
                          : QStringLiteral("Depths of this file are in feet (%1).").arg(file.depthUnit))
        + QLatin1Char(' ') + whatIsDone;
}

QString version3(const WellInfo &file)
{
    QString version = file.version;
    while (version.endsWith(QLatin1Char('.'))) // a header line without a colon
        version.chop(1);
    if (base::parseNumber(version).value_or(0) < 3)
        return {};
    return QStringLiteral("This is a file of LAS %1. It is read like LAS 2.0: only ~V, ~W, ~C and ~A, and columns "
                          "separated by blanks.")
        .arg(shortened(version));
}

QString lowerCaseSections(const WellInfo &file)
{
    if (file.lowerCaseSections.isEmpty())
        return {};
    QStringList titles;
    for (const QChar letter : file.lowerCaseSections)
        titles.append(QLatin1Char('~') + letter);
    return QStringLiteral("Section titles in lower case are not recognised; these sections are not read: %1.")
        .arg(titles.join(QStringLiteral(", ")));
}

QString dataSections(const WellInfo &file)
{
    QString text;
    if (file.dataSectionCount > 1)
        text =
            QStringLiteral("This file has %1 data sections. Each fills only the curves named since the one before.")
                .arg(file.dataSectionCount);
    if (file.rowsWithoutCurves > 0)
        text += (text.isEmpty() ? QString() : QStringLiteral(" "))
            + QStringLiteral("Data lines for which no curves are named are left out: %1.")
                  .arg(file.rowsWithoutCurves);
    return text;
}

QString firstCurves(const WellInfo &file)
{
    QStringList names;
    for (const LasDataSection &section : file.dataSections) {
        const QString name = file.curves.at(section.firstCurve).logName;
        if (!isDepthName(name))
            names.append(name);
    }
    if (names.isEmpty())
        return {};
    return QStringLiteral(
               "The first curve is no depth by its name: %1. Its values are taken as the depths all the same.")
        .arg(enumeration(names));
}

/// The column names behind "~A"; none where it is followed by other words, such as "Log Data".
QStringList namesOfTitle(const QString &title, const QStringList &curves)
{
    QStringList names;
    QString separated = title;
    separated.replace(QLatin1Char(','), QLatin1Char(' '));
    for (const QString &word : separated.simplified().split(QLatin1Char(' ')).mid(1))
        names.append(WellInfo::mnemonic(word.section(QLatin1Char('['), 0, 0))); // without the unit
    if (names.size() < 2)
        return {};
    const bool isList = isDepthName(names.first())
        || std::any_of(names.begin(), names.end(),
                       [&curves](const QString &name) { return curves.contains(name, Qt::CaseInsensitive); });
    return isList ? names : QStringList();
}

// Any depth names the depth, and titles write blanks and punctuation of mnemonics in other ways.
bool isSameColumns(QStringList names, QStringList curves)
{
    if (isDepthName(names.first()) && isDepthName(curves.first())) {
        names.removeFirst();
        curves.removeFirst();
    }
    const auto joined = [](const QStringList &list) {
        QString letters;
        for (const QChar c : list.join(QString()).toUpper())
            if (c.isLetterOrNumber())
                letters.append(c);
        return letters;
    };
    return joined(names) == joined(curves);
}

QString titles(const WellInfo &file)
{
    for (const LasDataSection &section : file.dataSections) {
        const QString title = file.lines.line(section.titleLine, longestLine);
        QStringList curves;
        for (int i = 0; i < section.curveCount; ++i)
            curves.append(file.curves.at(section.firstCurve + i).logName);
        const QStringList names = namesOfTitle(title, curves);
        if (title.size() < longestLine && !names.isEmpty() && !isSameColumns(names, curves))
            return QStringLiteral(
                       "The title of the data section names other columns than the curve section (%1). The "
                       "curve section counts.")
                .arg(shortened(title.simplified()));
    }
    return {};
}

// Of a wrapped file it says nothing new.
QString unevenRows(const WellInfo &file)
{
    int uneven = 0;
    int rows = 0;
    for (const LasDataSection &section : file.dataSections) {
        uneven += section.unevenRowCount;
        rows += section.rowCount;
    }
    if (uneven == 0 || file.wrapped)
        return {};
    return QStringLiteral(
               "Data lines with more or fewer columns than there are curves: %1 of %2. Columns in excess are "
               "left out; curves without a column have no sample there.")
        .arg(uneven)
        .arg(rows);
}

QString delimiter(const WellInfo &file)
{
    for (const LasDataSection &section : file.dataSections) {
        if (section.firstRowLine == 0)
            continue;
        const QString row = file.lines.line(section.firstRowLine, longestLine).trimmed();
        if (row.contains(QLatin1Char(',')) || row.contains(QLatin1Char(';')))
            return QStringLiteral(
                "Data lines hold commas or semicolons. Only blanks separate columns, and values that "
                "are no numbers with a decimal point become 0.");
        if (row.contains(QLatin1Char('\t')))
            return QStringLiteral(
                "Columns are separated by tabs. They count as blanks, so behind an empty column the "
                "values go to the wrong curves.");
    }
    return {};
}

QString repeatedNames(const WellInfo &file, const QString &whatIsDone)
{
    QSet<QString> once;
    QStringList twice;
    QSet<QString> listed;
    for (const LogCurveData &curve : file.curves) {
        const QString name = curve.logName;
        if (once.contains(name) && !listed.contains(name)) {
            listed.insert(name);
            twice.append(name);
        }
        once.insert(name);
    }
    if (twice.isEmpty())
        return {};
    return QStringLiteral("Curve names that stand more than once: %1. %2").arg(enumeration(twice), whatIsDone);
}

QString wrapped(const WellInfo &file)
{
    return !file.wrapped
        ? QString()
        : QStringLiteral("This file is wrapped (WRAP YES): a depth step spans several lines. It is read "
                         "line by line, so the values of its curves are wrong. Do not import them.");
}

} // namespace

QStringList importNotices(const WellInfo &file, int listedCurves, const NoticeTexts &texts)
{
    QStringList notices;
    if (file.isTooLarge)
        notices.append(
            QStringLiteral("This file is too large and was not read: it holds 2 GB or more, or more than fits "
                           "into the memory."));
    notices << wrapped(file) << feet(file, texts.feet) << version3(file) << lowerCaseSections(file) << delimiter(file)
            << dataSections(file) << firstCurves(file) << titles(file) << unevenRows(file)
            << repeatedNames(file, texts.repeatedNames);
    if (file.hasTabsInHeader)
        notices.append(
            QStringLiteral("The header holds tabs. They do not end a unit, so units and values behind them "
                           "may be misread."));
    if (file.curves.size() > listedCurves)
        notices.append(QStringLiteral("The file names %1 curves. Only the first %2 are listed.")
                           .arg(file.curves.size())
                           .arg(listedCurves));
    notices.removeAll(QString());
    return notices;
}

} // namespace las
