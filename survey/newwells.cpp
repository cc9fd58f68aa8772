#include "survey/newwells.h"

#include "base/numbers.h"
#include "las/logreader.h"

#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace survey {

namespace {

/// A tenth of a thousandth of the unit: what was converted has no more to say.
constexpr double lengthSteps = 10000;

QString lengthText(double length)
{
    return QString::fromLatin1(base::formatWritten(std::round(length * lengthSteps) / lengthSteps));
}

// A header that is silent on the ground leaves it unknown; the other fields need a number.
WellTexts textsOf(const WellProposal &proposal, NameSource source, DepthUnit unit)
{
    const auto depthText = [unit](double metres) { return lengthText(fromMetres(metres, unit)); };
    WellTexts texts;
    texts[WellField::Name] = nameFrom(proposal, source);
    texts[WellField::X] = lengthText(proposal.x);
    texts[WellField::Y] = lengthText(proposal.y);
    texts[WellField::KbElevation] = depthText(proposal.kbM);
    texts[WellField::GroundElevation] = proposal.groundM == 0 ? QString() : depthText(proposal.groundM);
    texts[WellField::TotalDepth] = roundedUpText(proposal.totalDepthM, unit);
    return texts;
}

double number(const QString &text)
{
    return base::parseNumber(text).value_or(0);
}

QString label(WellField field)
{
    switch (field) {
    case WellField::X:
        return QStringLiteral("X");
    case WellField::Y:
        return QStringLiteral("Y");
    case WellField::KbElevation:
        return QStringLiteral("KB");
    case WellField::GroundElevation:
        return QStringLiteral("ground elevation");
    default:
        return {};
    }
}

// Takes from a further file of the well what the files before did not tell.
void merge(NewWell *well, const WellProposal &proposal, const QStringList &notes, DepthUnit unit)
{
    const WellTexts further = textsOf(proposal, well->source, unit);
    QStringList differing;
    for (WellField field : {WellField::X, WellField::Y, WellField::KbElevation, WellField::GroundElevation}) {
        const double old = number(well->texts[field]);
        const double value = number(further[field]);
        if (old == 0)
            well->texts[field] = further[field];
        else if (value != 0 && value != old)
            differing.append(label(field));
    }
    if (number(further[WellField::TotalDepth]) > number(well->texts[WellField::TotalDepth]))
        well->texts[WellField::TotalDepth] = further[WellField::TotalDepth];
    well->files.append(proposal.file);
    well->logs += proposal.logs;

    // What one file lacks and another has is no longer worth a note.
    for (int i = well->notes.size(); i-- > 0;)
        if (!notes.contains(well->notes.at(i)))
            well->notes.removeAt(i);
    if (!differing.isEmpty())
        well->differences.append(QStringLiteral("%1 differs in %2; the first file counts.")
                                     .arg(QFileInfo(proposal.file).fileName(), differing.join(QStringLiteral(", "))));
}

QStringList notesOf(const WellProposal &proposal, NameSource source)
{
    QStringList notes = proposal.notes;
    const QString ofName = nameNote(proposal, source);
    if (!ofName.isEmpty())
        notes.prepend(ofName);
    return notes;
}

} // namespace

NewWells::File NewWells::readFile(const QString &path, const QByteArray &codec, DepthUnit unit)
{
    File file;
    const las::HeaderResult header = las::readHeader(path, codec);
    file.error = header.error;
    file.isUnicode = header.isUnicode;
    file.proposal.file = path;
    if (!header.error.isEmpty())
        return file;
    file.proposal = proposeWell(path, header.header, unit);
    if (file.proposal.totalDepthM <= 0) { // then the samples have to tell
        const double deepestM = las::readLogs(path).deepestM();
        if (deepestM > 0 && deepestM < deepestPossibleM) {
            file.proposal.totalDepthM = deepestM;
            file.proposal.notes.append(QStringLiteral("The total depth is that of the deepest sample."));
        }
    }
    return file;
}

void NewWells::addFiles(const QStringList &paths)
{
    for (const QString &path : paths)
        addFile(path);
}

void NewWells::addFile(const QString &path)
{
    if (m_paths.contains(path))
        return;
    m_paths.insert(path);
    append(readFile(path, m_codec, m_unit));
}

void NewWells::addProposal(const WellProposal &proposal)
{
    File file;
    file.proposal = proposal;
    append(file);
}

void NewWells::addUnreadable(const QString &path, const QString &reason)
{
    File file;
    file.proposal.file = path;
    file.error = reason;
    append(file);
}

void NewWells::append(const File &file)
{
    m_files.append(file);
    m_files.last().source = m_source;
    addToRows(m_files.last());
}

void NewWells::addToRows(const File &file)
{
    NewWell well;
    well.files.append(file.proposal.file);
    if (!file.error.isEmpty()) {
        well.state = NewWell::State::Unreadable;
        well.notes.append(file.error);
        m_wells.append(well);
        return;
    }
    well.source = file.source;
    well.texts = textsOf(file.proposal, file.source, m_unit);
    well.notes = notesOf(file.proposal, file.source);
    well.logs = file.proposal.logs;
    const QString name = WellNames::comparable(well.texts[WellField::Name]);
    const int row = m_rowOfName.value(name, -1);
    if (row >= 0) {
        merge(&m_wells[row], file.proposal, well.notes, m_unit);
        return;
    }
    if (m_existing.contains(name))
        well.state = NewWell::State::Exists;
    well.isChosen = well.state == NewWell::State::Proposed;
    m_rowOfName.insert(name, m_wells.size());
    m_chosenOfName[name] += well.isChosen ? 1 : 0;
    m_wells.append(well);
}

void NewWells::setNameSource(NameSource source)
{
    m_source = source;
    for (File &file : m_files)
        file.source = source;
    rebuild();
}

void NewWells::setNameSource(const QVector<int> &rows, NameSource source)
{
    QSet<QString> paths;
    for (int row : rows)
        for (const QString &path : m_wells.at(row).files)
            paths.insert(path);
    for (File &file : m_files)
        if (paths.contains(file.proposal.file))
            file.source = source;
    rebuild();
}

bool NewWells::hasForeignText() const
{
    return std::any_of(m_files.begin(), m_files.end(), [](const File &file) { return !file.isUnicode; });
}

void NewWells::setCodec(const QByteArray &codec)
{
    m_codec = codec;
    for (File &file : m_files) {
        if (file.isUnicode)
            continue;
        const NameSource source = file.source;
        file = readFile(file.proposal.file, codec, m_unit);
        file.source = source;
    }
    rebuild();
}

// Wells that were made stay, and so does what the user did to those whose files are the same.
void NewWells::rebuild()
{
    const QVector<NewWell> before = m_wells;
    QHash<QString, int> oldRow; // of a file
    for (int row = 0; row < before.size(); ++row)
        for (const QString &path : before.at(row).files)
            oldRow.insert(path, row);
    m_wells.clear();
    m_rowOfName.clear();
    m_chosenOfName.clear();
    for (const File &file : qAsConst(m_files)) {
        const NewWell old = before.value(oldRow.value(file.proposal.file, -1));
        if (old.state != NewWell::State::Created)
            addToRows(file);
        else if (old.files.first() == file.proposal.file)
            m_wells.append(old);
    }
    for (NewWell &well : m_wells) {
        const NewWell old = before.value(oldRow.value(well.files.first(), -1));
        if (old.files != well.files || well.state == NewWell::State::Created)
            continue;
        for (const int field : old.corrected) {
            if (static_cast<WellField>(field) == WellField::Name && old.source != well.source)
                continue;
            well.texts[static_cast<WellField>(field)] = old.texts[static_cast<WellField>(field)];
            well.corrected.insert(field);
        }
        if (m_existing.contains(well.texts[WellField::Name]))
            well.state = NewWell::State::Exists;
        else
            well.state = well.state == NewWell::State::Exists ? NewWell::State::Proposed : well.state;
        well.isChosen = old.isChosen && well.state != NewWell::State::Unreadable;
    }
    index();
}

void NewWells::index()
{
    m_rowOfName.clear();
    m_chosenOfName.clear();
    for (int row = 0; row < m_wells.size(); ++row) {
        const QString name = WellNames::comparable(m_wells.at(row).texts[WellField::Name]);
        if (isEditable(row) && !m_rowOfName.contains(name))
            m_rowOfName.insert(name, row);
        m_chosenOfName[name] += m_wells.at(row).isChosen ? 1 : 0;
    }
}

bool NewWells::isEditable(int row) const
{
    const NewWell::State state = m_wells.at(row).state;
    return state == NewWell::State::Proposed || state == NewWell::State::Exists;
}

void NewWells::setChosen(int row, bool isChosen)
{
    if (!isEditable(row))
        return;
    m_wells[row].isChosen = isChosen;
    index();
}

void NewWells::setText(int row, WellField field, const QString &text)
{
    if (!isEditable(row))
        return;
    NewWell &well = m_wells[row];
    well.texts[field] = text.trimmed();
    well.corrected.insert(static_cast<int>(field));
    well.failure.clear();
    if (field == WellField::Name)
        well.state = m_existing.contains(text) ? NewWell::State::Exists : NewWell::State::Proposed;
    index();
}

void NewWells::setCreated(const QVector<int> &rows)
{
    for (int row : rows) {
        NewWell &well = m_wells[row];
        well.state = NewWell::State::Created;
        well.isChosen = false;
        m_existing.insert(well.texts[WellField::Name]);
    }
    index();
}

void NewWells::setMade(const QVector<int> &rows, const QVector<MadeWell> &made)
{
    QVector<int> created;
    for (int i = 0; i < rows.size(); ++i) {
        NewWell &well = m_wells[rows.at(i)];
        well.failure = made.at(i).error;
        well.createdLogs = made.at(i).logCount;
        if (made.at(i).error.isEmpty())
            created.append(rows.at(i));
    }
    setCreated(created);
}

QString NewWells::problem(int row, WellField field) const
{
    const NewWell &well = m_wells.at(row);
    if (!well.isChosen)
        return {};
    const QString &text = well.texts[field];
    const QString problem = wellFieldProblem(field, text);
    if (!problem.isEmpty() || field != WellField::Name)
        return problem;
    if (m_existing.contains(text))
        return nameTakenProblem(text);
    if (m_chosenOfName.value(WellNames::comparable(text)) > 1)
        return QStringLiteral("Two chosen wells are named \"%1\".").arg(text);
    return {};
}

int NewWells::problemField(int row) const
{
    for (const WellField field : wellFields)
        if (!problem(row, field).isEmpty())
            return static_cast<int>(field);
    return -1;
}

QString NewWells::rowProblem(int row) const
{
    const int field = problemField(row);
    return field < 0 ? m_wells.at(row).failure : problem(row, static_cast<WellField>(field));
}

int NewWells::nextProblemRow(int row) const
{
    for (int step = 1; step <= m_wells.size(); ++step) {
        const int candidate = (qMax(-1, row) + step) % m_wells.size();
        if (problemField(candidate) >= 0)
            return candidate;
    }
    return -1;
}

void NewWells::uncheckProblems()
{
    QVector<int> wrong;
    for (int row = 0; row < m_wells.size(); ++row)
        if (problemField(row) >= 0)
            wrong.append(row);
    for (const int row : wrong)
        m_wells[row].isChosen = false;
    index();
}

QString NewWells::firstProblem() const
{
    const int row = nextProblemRow(-1);
    if (row < 0)
        return {};
    const QString name = m_wells.at(row).texts[WellField::Name];
    return (name.isEmpty() ? fileNames(m_wells.at(row)) : name) + QStringLiteral(": ")
        + problem(row, static_cast<WellField>(problemField(row)));
}

int NewWells::chosenCount() const
{
    int count = 0;
    for (const NewWell &well : m_wells)
        count += well.isChosen ? 1 : 0;
    return count;
}

QString fileNames(const NewWell &well)
{
    QStringList names;
    for (const QString &file : well.files)
        names.append(QFileInfo(file).fileName());
    return names.join(QStringLiteral(", "));
}

} // namespace survey
