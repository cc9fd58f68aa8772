#include "survey/topsplan.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace survey {

namespace {

constexpr int longestShownLine = 200;

// What people add to the name of a well when they name its file.
QString withoutKind(const QString &baseName)
{
    static const QRegularExpression kinds(
        QStringLiteral("(?<![^\\W_])(well)?(tops?|picks?|markers?|formations?|zones?|stratigraphy)(?![^\\W_])"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    return QString(baseName).remove(kinds);
}

QString quotedNames(const TopsRow &first, const TopsRow &second)
{
    return QStringLiteral("\"%1\" and \"%2\"").arg(first.names.first(), second.names.first());
}

} // namespace

TopsSource topsSource(SurveyStore &store)
{
    return {[&store](const QString &key) { return store.head(key); },
            [&store](const QString &key, const WellHead &head) { return store.markers(key, head); }};
}

TopsInput readTops(const QString &path)
{
    const FileRead read = readFile(path);
    if (read.errorCode == 0)
        return {path, parseTops(read.bytes)};
    TopsInput unreadable{path, {}};
    unreadable.file.problem = unreadableText(read.errorCode) + QLatin1Char('.');
    return unreadable;
}

TopsPlan::TopsPlan(const QVector<host::WellEntry> &wells, DepthUnit unit, const TopsSource &source)
    : m_wells(wells)
    , m_source(source)
    , m_surveyUnit(unit)
    , m_unit(unit)
{
    for (int i = 0; i < m_wells.size(); ++i) {
        m_wellsOfName[m_wells.at(i).name].append(i);
        if (const QString letters = comparableName(m_wells.at(i).name); !letters.isEmpty())
            m_wellsOfLetters[letters].append(i);
    }
}

TopsPlan::Target &TopsPlan::target(int well)
{
    const auto known = m_targets.find(well);
    if (known != m_targets.end())
        return *known;
    Target &fresh = m_targets[well];
    fresh.head = m_source.head(m_wells.at(well).key);
    return fresh;
}

void TopsPlan::readUwis()
{
    if (m_hasUwis)
        return;
    m_hasUwis = true;
    for (int i = 0; i < m_wells.size(); ++i)
        if (const QString uwi = comparableName(target(i).head.value.uwi); !uwi.isEmpty())
            m_wellsOfUwi[uwi].append(i);
}

TopsPlan::Found TopsPlan::only(const QVector<int> &wells, TopsRow::Match match) const
{
    if (wells.size() == 1)
        return {match, wells.first(), {}};
    Found several{TopsRow::Match::Several, -1, {}};
    for (const int well : wells)
        several.candidates.append(m_wells.at(well).name);
    return several;
}

TopsPlan::Found TopsPlan::wellCalled(const QString &name)
{
    if (const QVector<int> wells = m_wellsOfName.value(name); !wells.isEmpty())
        return only(wells, TopsRow::Match::Exact);
    const QString letters = comparableName(name);
    if (const QVector<int> wells = m_wellsOfLetters.value(letters); !wells.isEmpty())
        return only(wells, TopsRow::Match::Alike);
    if (letters.isEmpty())
        return {};
    readUwis();
    const QVector<int> wells = m_wellsOfUwi.value(letters);
    return wells.isEmpty() ? Found() : only(wells, TopsRow::Match::Uwi);
}

TopsPlan::Found TopsPlan::wellOfFile(const QString &baseName)
{
    const Found found = wellCalled(baseName);
    return found.match == TopsRow::Match::None ? wellCalled(withoutKind(baseName)) : found;
}

void TopsPlan::addRow(const QString &name, const Found &found)
{
    TopsRow row;
    row.names.append(name);
    row.match = found.match;
    row.well = found.well;
    row.candidates = found.candidates;
    m_rows.append(row);
}

// Spellings of one well share a row.
int TopsPlan::rowOf(const QString &name)
{
    const auto known = m_rowOfName.constFind(name);
    if (known != m_rowOfName.constEnd())
        return *known;
    const Found found = wellCalled(name);
    int &row = found.well >= 0
        ? *m_rowOfWell.insert(found.well, m_rowOfWell.value(found.well, -1))
        : *m_rowOfLetters.insert(comparableName(name), m_rowOfLetters.value(comparableName(name), -1));
    if (row < 0) {
        row = m_rows.size();
        addRow(name, found);
    } else {
        m_rows[row].names.append(name);
    }
    m_rowOfName.insert(name, row);
    return row;
}

QSet<int> TopsPlan::addFile(const TopsInput &input)
{
    const TopsFile &file = input.file;
    const int wholeRow = file.hasWells ? -1 : m_rows.size();
    if (!file.hasWells) {
        const QFileInfo info(input.path);
        addRow(info.fileName(), wellOfFile(info.completeBaseName()));
        m_rows.last().isWholeFile = true;
    }
    QSet<int> touched;
    const auto rowOfLine = [&](const TopsLine &line) -> TopsRow & {
        const int row = file.hasWells ? rowOf(line.well) : wholeRow;
        if (!touched.contains(row))
            m_rows[row].files.append(input.path);
        touched.insert(row);
        return m_rows[row];
    };
    for (const TopsLine &line : file.lines)
        rowOfLine(line).tops.append(line);
    for (const TopsLine &line : file.leftOut) {
        m_remarks.append({input.path, line.number, line.problem, line.text});
        if (!file.hasWells || !comparableName(line.well).isEmpty())
            ++rowOfLine(line).unreadableLines;
    }
    m_isUnitOpen = m_isUnitOpen || !file.unit;
    return touched;
}

void TopsPlan::add(const QVector<TopsInput> &files)
{
    QSet<int> touched;
    for (const TopsInput &input : files) {
        const QString place = QDir::cleanPath(QDir::current().absoluteFilePath(input.path));
        if (m_paths.contains(place))
            continue;
        m_paths.insert(place);
        if (input.file.problem.isEmpty())
            touched += addFile(input);
        else
            m_remarks.append({input.path, 0, input.file.problem, {}});
    }
    for (const int row : qAsConst(touched))
        merge(&m_rows[row]);
    findProblems();
}

void TopsPlan::merge(TopsRow *row)
{
    row->merge = {};
    row->error.clear();
    row->isWritten = false;
    if (row->well < 0)
        return;
    const QString key = m_wells.at(row->well).key;
    Target &well = target(row->well);
    if (well.head.ok() && !well.hasMarkers) {
        well.hasMarkers = true;
        well.markers = m_source.markers(key, well.head.value);
    }
    row->error = well.head.ok() ? well.markers.error : well.head.error;
    if (row->error.isEmpty())
        row->merge = withTops(well.markers.value, row->tops, m_unit, well.head.value.header.totalDepth, m_surveyUnit);
}

void TopsPlan::setUnit(DepthUnit unit)
{
    if (unit == m_unit)
        return;
    m_unit = unit;
    for (TopsRow &row : m_rows)
        merge(&row);
    findProblems();
}

void TopsPlan::setWell(int row, int well)
{
    TopsRow &changed = m_rows[row];
    if (changed.well == well)
        return;
    changed.well = well;
    changed.match = TopsRow::Match::User;
    merge(&changed);
    findProblems();
}

void TopsPlan::setWritten(int row, const QString &error)
{
    TopsRow &tried = m_rows[row];
    tried.error = error;
    tried.isWritten = error.isEmpty();
    if (tried.isWritten)
        target(tried.well).markers.value = tried.merge.markers;
    findProblems();
}

void TopsPlan::findProblems()
{
    QHash<int, int> rowOfWell;
    for (int i = 0; i < m_rows.size(); ++i) {
        TopsRow &row = m_rows[i];
        row.problem.clear();
        if (row.well < 0 || row.isWritten || row.tops.isEmpty())
            continue;
        const int other = rowOfWell.value(row.well, -1);
        if (other < 0) {
            rowOfWell.insert(row.well, i);
            continue;
        }
        row.problem = QStringLiteral("%1 go into the same well, \"%2\": leave one of them out.")
                          .arg(quotedNames(m_rows.at(other), row), m_wells.at(row.well).name);
        m_rows[other].problem = row.problem;
    }
}

QString TopsPlan::firstProblem() const
{
    for (const TopsRow &row : m_rows)
        if (!row.problem.isEmpty())
            return row.problem;
    return {};
}

QVector<int> TopsPlan::rowsToWrite() const
{
    QVector<int> rows;
    for (int row = 0; row < m_rows.size(); ++row)
        if (m_rows.at(row).changesAnything())
            rows.append(row);
    return rows;
}

host::Status writeTops(SurveyStore &store, TopsPlan *plan, int row)
{
    const TopsRow &tops = plan->rows().at(row);
    const host::Status status = store.writeMarkers(plan->wells().at(tops.well).key, tops.merge.markers);
    plan->setWritten(row, status.error);
    return status;
}

QString remarkText(const TopsRemark &remark)
{
    const QString name = QFileInfo(remark.file).fileName();
    if (remark.line == 0)
        return QStringLiteral("%1: %2").arg(name, remark.problem);
    const bool isLong = remark.text.size() > longestShownLine;
    return QStringLiteral("%1, line %2, %3: %4")
        .arg(name, QString::number(remark.line), remark.problem,
             isLong ? remark.text.left(longestShownLine) + QStringLiteral("…") : remark.text);
}

} // namespace survey
