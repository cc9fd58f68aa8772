#include "survey/newwells.h"

#include "base/numbers.h"

#include <QFileInfo>

#include <cmath>

namespace survey {

namespace {

/// A tenth of a thousandth of the unit: what was converted has no more to say.
constexpr double lengthSteps = 10000;

QString lengthText(double length)
{
    return QString::fromLatin1(base::formatShortest(std::round(length * lengthSteps) / lengthSteps));
}

// Rounded up: in the single precision of the host, too, the well ends no higher than its deepest sample.
QString totalDepthText(double metres, DepthUnit unit)
{
    const auto endsAbove = [metres, unit](double steps) {
        const auto stored = static_cast<float>(steps / lengthSteps);
        return (unit == DepthUnit::Foot ? host::feetToMetres(stored) : stored) < static_cast<float>(metres);
    };
    const double depth = fromMetres(metres, unit);
    double steps = std::round(depth * lengthSteps);
    while (steps / lengthSteps < depth || endsAbove(steps))
        ++steps;
    return QString::fromLatin1(base::formatShortest(steps / lengthSteps));
}

// A header that is silent on the ground leaves it unknown; the other fields need a number.
WellTexts textsOf(const WellProposal &proposal, DepthUnit unit)
{
    const auto depthText = [unit](double metres) { return lengthText(fromMetres(metres, unit)); };
    WellTexts texts;
    texts[WellField::Name] = proposal.name;
    texts[WellField::X] = lengthText(proposal.x);
    texts[WellField::Y] = lengthText(proposal.y);
    texts[WellField::KbElevation] = depthText(proposal.kbM);
    texts[WellField::GroundElevation] = proposal.groundM == 0 ? QString() : depthText(proposal.groundM);
    texts[WellField::TotalDepth] = totalDepthText(proposal.totalDepthM, unit);
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
void merge(NewWell *well, const WellProposal &proposal, DepthUnit unit)
{
    const WellTexts further = textsOf(proposal, unit);
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

    // What one file lacks and another has is no longer worth a note.
    for (int i = well->notes.size(); i-- > 0;)
        if (!proposal.notes.contains(well->notes.at(i)))
            well->notes.removeAt(i);
    if (!differing.isEmpty())
        well->differences.append(QStringLiteral("%1 differs in %2; the first file counts.")
                                     .arg(QFileInfo(proposal.file).fileName(), differing.join(QStringLiteral(", "))));
}

} // namespace

void NewWells::addFiles(const QStringList &paths)
{
    for (const QString &path : paths) {
        if (m_paths.contains(path))
            continue;
        m_paths.insert(path);
        const las::HeaderResult header = las::readHeader(path);
        if (header.error.isEmpty())
            addProposal(proposeWell(path, header.header, m_unit));
        else
            addUnreadable(path, header.error);
    }
}

void NewWells::addProposal(const WellProposal &proposal)
{
    const QString name = WellNames::comparable(proposal.name);
    const int row = m_rowOfName.value(name, -1);
    if (row >= 0) {
        merge(&m_wells[row], proposal, m_unit);
        return;
    }
    NewWell well;
    well.files.append(proposal.file);
    well.texts = textsOf(proposal, m_unit);
    well.notes = proposal.notes;
    if (m_existing.contains(proposal.name))
        well.state = NewWell::State::Exists;
    well.isChosen = well.state == NewWell::State::Proposed;
    m_rowOfName.insert(name, m_wells.size());
    m_chosenOfName[name] += well.isChosen ? 1 : 0;
    m_wells.append(well);
}

void NewWells::addUnreadable(const QString &path, const QString &reason)
{
    NewWell well;
    well.state = NewWell::State::Unreadable;
    well.files.append(path);
    well.notes.append(reason);
    m_wells.append(well);
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

QString NewWells::firstProblem() const
{
    for (int row = 0; row < m_wells.size(); ++row) {
        for (WellField field : wellFields) {
            const QString found = problem(row, field);
            if (found.isEmpty())
                continue;
            const QString name = m_wells.at(row).texts[WellField::Name];
            return (name.isEmpty() ? fileNames(m_wells.at(row)) : name) + QStringLiteral(": ") + found;
        }
    }
    return {};
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
