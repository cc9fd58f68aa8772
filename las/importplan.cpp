#include "las/importplan.h"

#include "datastore/storedsample.h"
#include "las/feet.h"
#include "las/resampling.h"
#include "las/showntext.h"

#include <algorithm>
#include <cmath>

namespace las {

namespace {

bool isDescending(const QVector<double> &depths)
{
    return depths.size() > 1 && depths.at(1) - depths.at(0) < 0;
}

QVector<double> reversed(const QVector<double> &list)
{
    QVector<double> result(list.size());
    std::reverse_copy(list.begin(), list.end(), result.begin());
    return result;
}

QVector<double> inMetres(QVector<double> depths, double metresPerUnit)
{
    if (metresPerUnit != 1)
        for (double &depth : depths)
            depth *= metresPerUnit;
    return depths;
}

// The file's step counts with its absolute value, which is the step of the ascending depths only where they are even;
// so it is compared here and not by differsFromStep().
bool wantsResampling(const QVector<double> &depths, const ImportOptions &options)
{
    if (!options.isResampling || depths.size() < 2)
        return false;
    const double step = std::abs(depths.at(1) - depths.at(0));
    return !(std::abs(static_cast<double>(options.interval) - step) <= stepTolerance);
}

// A depth that is no number reads as 0, which can pass for the first depth of a rising file or the last of a falling
// one.
bool canBeResampled(const ImportTab &tab, const ImportRow &row, const QVector<double> &ascendingDepths)
{
    return !tab.file->hasUnreadableDepth(row.curve) && isStrictlyIncreasing(ascendingDepths);
}

QString gridRefusal(const ImportTab &tab, const ImportRow &row, const ImportOptions &options)
{
    const QVector<double> depths = inMetres(tab.file->curves.at(row.curve).depths, tab.metresPerUnit);
    if (!wantsResampling(depths, options)
        || !canBeResampled(tab, row, isDescending(depths) ? reversed(depths) : depths))
        return {};
    const auto interval = static_cast<double>(options.interval);
    const QString problem = intervalProblem(interval);
    if (!problem.isEmpty())
        return problem;
    const auto range = std::minmax(depths.first(), depths.last());
    return gridProblem(range.first, range.second, interval,
                       tab.title + QStringLiteral(", ") + shortened(row.logName));
}

// All curves of a file share their depths as a rule; what holds for one then holds for the next.
QString gridRefusal(const ImportTab &tab, const ImportOptions &options)
{
    const double *checked = nullptr;
    for (const ImportRow &row : tab.rows) {
        const double *depths = tab.file->curves.at(row.curve).depths.constData();
        if (!row.isSelected || depths == checked)
            continue;
        checked = depths;
        const QString problem = gridRefusal(tab, row, options);
        if (!problem.isEmpty())
            return problem;
    }
    return {};
}

} // namespace

ImportTab importTab(const WellInfo &file, const QString &title, bool convertsFeet)
{
    ImportTab tab;
    tab.file = &file;
    tab.title = title;
    tab.metresPerUnit = convertsFeet ? metresPerFeetUnit(file.depthUnit).value_or(1) : 1;
    tab.startDepth = file.startDepth * tab.metresPerUnit;
    tab.stopDepth = file.stopDepth * tab.metresPerUnit;
    return tab;
}

QString stopReason(const ImportTab &tab, int tabNumber)
{
    if (tab.wellKey.isEmpty())
        return QStringLiteral("Well is not selected in %1 tab.\nPlease select Well name for importing well logs.")
            .arg(tabNumber);
    const auto tooDeep = [&tab](const QString &which) {
        return tab.wellName + QStringLiteral("'s maximum depth is less than LAS files ") + which
            + QStringLiteral(" depth.\nPlease update Well defination or changed the LAS file");
    };
    // Hosts keep depths in single precision: a file that ends at its well's total depth must not lie a rounding below.
    const auto isBelow = [&tab](double depth) {
        return static_cast<float>(depth) > static_cast<float>(tab.wellMaximumDepth);
    };
    if (isBelow(tab.startDepth))
        return tooDeep(QStringLiteral("start"));
    return isBelow(tab.stopDepth) ? tooDeep(QStringLiteral("end")) : QString();
}

QString refusal(const QVector<ImportTab> &tabs, const ImportOptions &options)
{
    NameList nameless;
    QString gridProblem;
    for (int i = 0; i < tabs.size() && stopReason(tabs.at(i), i + 1).isEmpty(); ++i) {
        const ImportTab &tab = tabs.at(i);
        for (int row = 0; row < tab.rows.size(); ++row)
            if (tab.rows.at(row).isSelected && tab.rows.at(row).logName.isEmpty())
                nameless.add(tab.title,
                             QStringLiteral("row %1 (%2)")
                                 .arg(QString::number(row + 1),
                                      shortened(tab.file->curves.at(tab.rows.at(row).curve).logName)));
        if (gridProblem.isEmpty() && options.isResampling)
            gridProblem = gridRefusal(tab, options);
    }
    if (nameless.isEmpty())
        return gridProblem;
    return QStringLiteral("These selected rows have no alternate curve name:\n%1\n"
                          "Please give them a name or clear their check boxes. Nothing was imported.")
        .arg(nameless.text());
}

bool hasSelection(const QVector<ImportTab> &tabs)
{
    return std::any_of(tabs.begin(), tabs.end(), [](const ImportTab &tab) {
        return std::any_of(tab.rows.begin(), tab.rows.end(), [](const ImportRow &row) { return row.isSelected; });
    });
}

ImportedCurve importedCurve(const ImportTab &tab, const ImportRow &row, const ImportOptions &options)
{
    ImportedCurve imported;
    LogCurveData &record = imported.record;
    record = tab.file->curves.at(row.curve);
    record.wellName = tab.wellName;
    record.curveGroup = row.group;
    record.logName = row.logName;
    record.displayName = row.logName;
    record.nullValue = tab.file->nullValue;
    record.isLogarithmic = row.group == QLatin1String("Resistivity") ? 1 : 0;
    record.depths = inMetres(std::move(record.depths), tab.metresPerUnit);
    const bool isResampled = wantsResampling(record.depths, options);
    if (isDescending(record.depths)) {
        record.depths = reversed(record.depths);
        record.values = reversed(record.values);
    }
    if (!isResampled)
        return imported;
    imported.isUnsuited = !canBeResampled(tab, row, record.depths);
    if (!imported.isUnsuited) {
        Samples samples = resample(record.depths, record.values, static_cast<double>(options.interval));
        record.depths = samples.depths;
        record.values = samples.values;
    }
    return imported;
}

// The host writer turns -999.25 and nothing else into "not measured". A file that says NULL -9999 or 0 means the same
// by its own number, which would otherwise stand in the well as a measurement. Values are compared as they are stored: the
// spline leaves the null value in the middle of nulls only nearly. What it made between null and value stays, since nulls
// take part in it.
LogCurveData withHostNulls(LogCurveData record, const WellInfo &file)
{
    if (!file.hasNullValue || file.nullValue == nullSampleValue)
        return record;
    record.nullValue = nullSampleValue;
    std::replace_if(
        record.values.begin(), record.values.end(),
        [&file](double value) { return isStoredAs(value, file.nullValue); }, nullSampleValue);
    return record;
}

QString unsuitedWarning(const NameList &curves)
{
    return QStringLiteral(
               "The depths of these curves do not run strictly up or down, or are not all numbers, so no interval "
               "could be applied.\n"
               "They were imported as they stand in the file:\n%1")
        .arg(curves.text());
}

} // namespace las
