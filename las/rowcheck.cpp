#include "las/rowcheck.h"

#include "base/numbers.h"
#include "las/resampling.h"
#include "las/showntext.h"
#include "las/wellinfo.h"

#include <QStringList>

#include <cmath>
#include <limits>
#include <optional>

namespace las {

namespace {

constexpr int longestLine = 64 * 1024;

/// Looks at the lines of one data section in turn.
class RowChecker
{
public:
    explicit RowChecker(RowFindings *findings)
        : m_findings(findings)
    {
    }
    void check(int line, const QStringList &values, int columns);

private:
    using Kind = RowFinding::Kind;

    void add(Kind kind, int line, const QString &text)
    {
        if (++m_findings->counts[static_cast<int>(kind)] <= RowFindings::mostListed)
            m_findings->first.append({kind, line, shortened(text)});
    }
    void checkDepth(int line, const QString &text);

    RowFindings *m_findings;
    double m_last = std::numeric_limits<double>::quiet_NaN();
    double m_step = std::numeric_limits<double>::quiet_NaN(); ///< of the first two depths
};

void RowChecker::checkDepth(int line, const QString &text)
{
    const std::optional<double> depth = base::parseNumber(text);
    if (!depth) {
        add(Kind::NoDepth, line, text);
        return;
    }
    const double step = *depth - m_last; // no number at the first depth
    m_last = *depth;
    if (std::isnan(m_step))
        m_step = step;
    if (step == 0)
        add(Kind::RepeatedDepth, line, text);
    else if (step * m_step < 0)
        add(Kind::TurningDepth, line, text);
    else if (std::abs(step - m_step) > stepTolerance * 1.5)
        add(Kind::OddStep, line, text);
}

void RowChecker::check(int line, const QStringList &values, int columns)
{
    checkDepth(line, values.first());
    if (values.size() != columns)
        add(Kind::OtherCount, line, QStringLiteral("%1 instead of %2").arg(values.size()).arg(columns));
    for (int i = 1; i < qMin(values.size(), columns); ++i) {
        if (base::parseNumber(values.at(i)))
            continue;
        add(Kind::Text, line, values.at(i));
        return; // one a line is enough
    }
}

} // namespace

RowFindings checkRows(const WellInfo &file)
{
    RowFindings findings;
    if (file.wrapped)
        return findings;
    for (const LasDataSection &section : file.dataSections) {
        RowChecker checker(&findings);
        int rows = 0;
        for (int i = section.firstRowLine; rows < section.rowCount && i > 0 && i < file.lines.count(); ++i) {
            const QString line = file.lines.line(i, longestLine).simplified();
            if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
                continue;
            checker.check(i, line.split(QLatin1Char(' ')), section.curveCount);
            ++rows;
        }
    }
    return findings;
}

} // namespace las
