#include "survey/laswellproposal.h"

#include "base/numbers.h"
#include "las/lengthunit.h"
#include "las/logreader.h"
#include "survey/nullvalues.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <optional>

namespace survey {

namespace {

QStringList list(const char *words)
{
    return QString::fromLatin1(words).split(u' ');
}

/// A number of the header with the unit that stands with it.
struct Quantity
{
    QString mnemonic;
    QString unit;
    double value = 0;
};

enum class LengthUnit { None, Metre, Foot, Other };

LengthUnit lengthUnit(const QString &unit)
{
    const std::optional<double> metres = las::metresPerUnit(unit);
    if (unit.trimmed().isEmpty())
        return LengthUnit::None;
    return metres == 1.0 ? LengthUnit::Metre : metres == host::metresPerFoot ? LengthUnit::Foot : LengthUnit::Other;
}

struct Length
{
    QString mnemonic;
    double metres = 0;
    bool fromFeet = false;
};

/// Reads one header on behalf of proposeWell().
class Proposer
{
public:
    Proposer(const QString &file, const las::Header &header, DepthUnit surveyUnit);

    WellProposal proposal();

private:
    bool isNull(double value) const;
    std::optional<Quantity> quantityOf(const las::HeaderItem &item) const;
    std::optional<Quantity> quantity(const QString &mnemonic) const;
    QString text(const QStringList &mnemonics) const;
    /// Nothing, and a note, for units that are none of length and for metres outside the range.
    std::optional<Length> length(const Quantity &quantity, double lowestM, double highestM, LengthUnit withoutUnit);
    std::optional<Length> firstLength(const QStringList &mnemonics, double lowestM, double highestM);
    /// The metres of a length that goes into the proposal and is stored in \a storedUnit, 0 without one.
    double use(const std::optional<Length> &length, DepthUnit storedUnit);
    double useDepth(const std::optional<Length> &length) { return use(length, m_surveyUnit); }

    void proposeName();
    void proposeCoordinates();
    bool coordinatesFromItems();
    bool coordinatesFromLocation();
    void proposeElevations();
    void proposeTotalDepth();
    void noteConversions();
    void note(const QString &sentence) { m_proposal.notes.append(sentence); }

    const las::Header &m_header;
    WellProposal m_proposal;
    std::optional<double> m_nullValue;
    LengthUnit m_indexUnit = LengthUnit::None;
    DepthUnit m_surveyUnit;
    QStringList m_fromFeet;
    QStringList m_fromMetres;
};

Proposer::Proposer(const QString &file, const las::Header &header, DepthUnit surveyUnit)
    : m_header(header)
    , m_surveyUnit(surveyUnit)
{
    m_proposal.file = file;
    if (const las::HeaderItem *item = header.find(u'W', {QStringLiteral("NULL")}))
        m_nullValue = base::parseNumber(item->value);
    if (const las::HeaderItem *item = header.find(u'W', {QStringLiteral("STRT")}))
        m_indexUnit = lengthUnit(item->unit);
}

WellProposal Proposer::proposal()
{
    proposeName();
    proposeCoordinates();
    proposeElevations();
    proposeTotalDepth();
    noteConversions();
    m_proposal.logs = las::promisedLogs(m_header);
    return m_proposal;
}

bool Proposer::isNull(double value) const
{
    return (m_nullValue && std::abs(value - *m_nullValue) < 1e-4) || isUsualNull(value);
}

std::optional<Quantity> Proposer::quantityOf(const las::HeaderItem &item) const
{
    const QStringList words = item.value.simplified().split(u' ');
    const std::optional<double> number = base::parseNumber(words.at(0));
    // "136 m" is a number with its unit, "21 23 06.314" is none.
    if (!number || isNull(*number) || words.size() > 2 || (words.size() == 2 && base::parseNumber(words.at(1))))
        return std::nullopt;
    return Quantity{item.mnemonic, item.unit.isEmpty() && words.size() == 2 ? words.at(1) : item.unit, *number};
}

std::optional<Quantity> Proposer::quantity(const QString &mnemonic) const
{
    for (const las::HeaderItem &item : m_header.items) {
        if ((item.section != u'W' && item.section != u'P')
            || item.mnemonic.compare(mnemonic, Qt::CaseInsensitive) != 0)
            continue;
        if (const std::optional<Quantity> found = quantityOf(item))
            return found;
    }
    return std::nullopt;
}

QString Proposer::text(const QStringList &mnemonics) const
{
    static const QStringList nothing = list("N/A NA NONE UNKNOWN NULL - -- ?");
    for (const QString &mnemonic : mnemonics) {
        for (const las::HeaderItem &item : m_header.items) {
            if ((item.section != u'W' && item.section != u'P')
                || item.mnemonic.compare(mnemonic, Qt::CaseInsensitive) != 0)
                continue;
            QString value = item.value;
            value.remove(QChar(u'\0'));
            value = value.simplified();
            const std::optional<double> number = base::parseNumber(value);
            // A null value of 0 must not hide a well called "0", it hides no name at all.
            const bool isNullNumber = number && *number < 0 && isNull(*number);
            if (!value.isEmpty() && !isNullNumber && !nothing.contains(value, Qt::CaseInsensitive))
                return value;
        }
    }
    return QString();
}

std::optional<Length> Proposer::length(const Quantity &quantity, double lowestM, double highestM,
                                       LengthUnit withoutUnit)
{
    LengthUnit unit = lengthUnit(quantity.unit);
    if (unit == LengthUnit::None)
        unit = withoutUnit;
    if (unit == LengthUnit::Other) {
        note(QStringLiteral("%1 is left out: its unit \"%2\" is no unit of length known here.")
                 .arg(quantity.mnemonic, quantity.unit));
        return std::nullopt;
    }
    const bool fromFeet = unit == LengthUnit::Foot;
    const double metres = fromFeet ? quantity.value * host::metresPerFoot : quantity.value;
    if (metres < lowestM || metres > highestM) {
        note(QStringLiteral("%1 is left out: %2 is not possible.")
                 .arg(quantity.mnemonic, QString::fromLatin1(base::formatWritten(quantity.value))));
        return std::nullopt;
    }
    return Length{quantity.mnemonic, metres, fromFeet};
}

std::optional<Length> Proposer::firstLength(const QStringList &mnemonics, double lowestM, double highestM)
{
    for (const QString &mnemonic : mnemonics) {
        if (const std::optional<Quantity> found = quantity(mnemonic)) {
            if (std::optional<Length> result = length(*found, lowestM, highestM, m_indexUnit))
                return result;
        }
    }
    return std::nullopt;
}

double Proposer::use(const std::optional<Length> &length, DepthUnit storedUnit)
{
    if (!length)
        return 0;
    const DepthUnit given = length->fromFeet ? DepthUnit::Foot : DepthUnit::Metre;
    if (given != storedUnit)
        (length->fromFeet ? m_fromFeet : m_fromMetres).append(length->mnemonic);
    return length->metres;
}

void Proposer::proposeName()
{
    m_proposal.wellName = text(list("WELL WELL_NAME WELLNAME"));
    m_proposal.uwi = text(list("UWI UNIQUE_WELL_ID API"));
    m_proposal.name = nameFrom(m_proposal, NameSource::Well);
}

bool Proposer::coordinatesFromItems()
{
    static const char *const pairs[][2] = {
        {"X", "Y"},         {"XCOORD", "YCOORD"},      {"X_COORD", "Y_COORD"},    {"XCRD", "YCRD"},
        {"XWELL", "YWELL"}, {"SURFX", "SURFY"},        {"X_LOC", "Y_LOC"},        {"XLOC", "YLOC"},
        {"UTMX", "UTMY"},   {"UTM_X", "UTM_Y"},        {"EASTING", "NORTHING"},   {"EAST", "NORTH"},
        {"EAST", "NRTH"},   {"EASTINGS", "NORTHINGS"}, {"UTM_EAST", "UTM_NORTH"},
    };
    constexpr double farthest = 1e8;
    for (const auto &pair : pairs) {
        const std::optional<Quantity> x = quantity(QLatin1String(pair[0]));
        const std::optional<Quantity> y = quantity(QLatin1String(pair[1]));
        if (!x || !y)
            continue;
        const std::optional<Length> xLength = length(*x, -farthest, farthest, LengthUnit::Metre);
        const std::optional<Length> yLength = length(*y, -farthest, farthest, LengthUnit::Metre);
        if (xLength && yLength) {
            m_proposal.x = use(xLength, DepthUnit::Metre);
            m_proposal.y = use(yLength, DepthUnit::Metre);
            return true;
        }
    }
    return false;
}

/// "502500.00 , 6003000.00" as our own export writes it, "X=502500 Y=6003000", "502500 6003000".
bool Proposer::coordinatesFromLocation()
{
    static const QRegularExpression twoNumbers(
        QStringLiteral("^(?:X\\s*[=:]?\\s*)?([-+]?[0-9]+(?:\\.[0-9]*)?)(?:\\s*[,;]\\s*|\\s+)(?:Y\\s*[=:]?\\s*)?"
                       "([-+]?[0-9]+(?:\\.[0-9]*)?)$"),
        QRegularExpression::CaseInsensitiveOption);
    for (const char *mnemonic : {"LOC", "LOC1", "LOC2"}) {
        const QRegularExpressionMatch match = twoNumbers.match(text(list(mnemonic)));
        const std::optional<double> x = base::parseNumber(match.captured(1));
        const std::optional<double> y = base::parseNumber(match.captured(2));
        if (!x || !y || isNull(*x) || isNull(*y))
            continue;
        m_proposal.x = *x;
        m_proposal.y = *y;
        return true;
    }
    return false;
}

void Proposer::proposeCoordinates()
{
    if (coordinatesFromItems() || coordinatesFromLocation())
        return;
    const bool isGeographic = !text(list("LATI LAT LATITUDE")).isEmpty();
    note(isGeographic ? QStringLiteral("The header has latitude and longitude but no map coordinates; X and Y are 0.")
                      : QStringLiteral("The header has no map coordinates; X and Y are 0."));
}

void Proposer::proposeElevations()
{
    constexpr double lowestLand = -500;
    constexpr double highestLand = 9000;
    constexpr double deepestSea = -12000;
    const std::optional<Length> ground =
        firstLength(list("EGL GL ELEV_GL ELEVGL GRLV GROUND"), deepestSea, highestLand);
    m_proposal.groundM = useDepth(ground);

    std::optional<Length> kb =
        firstLength(list("EKB KB ELEV_KB ELEVKB KB_ELEV KBELEV ELKB LMF"), lowestLand, highestLand);
    // A field that was never filled in: the bushing does not stand below the ground.
    if (kb && kb->metres == 0 && m_proposal.groundM > 0)
        kb = std::nullopt;
    const QString reference = text(list("DREF LMF")).toUpper();
    if (!kb && !reference.startsWith(u'G'))
        kb = firstLength(list("EREF"), lowestLand, highestLand);
    if (!kb)
        kb = firstLength(list("ELEV"), lowestLand, highestLand);
    if (!kb) {
        kb = firstLength(list("EDF DF ELEV_DF"), lowestLand, highestLand);
        if (kb)
            note(QStringLiteral("There is no elevation of the kelly bushing; that of the derrick floor is used."));
    }
    m_proposal.kbM = useDepth(kb);
    if (!kb)
        note(QStringLiteral("The header has no elevation of the kelly bushing; it is 0."));
    else if (m_proposal.kbM < m_proposal.groundM)
        note(QStringLiteral("The kelly bushing would stand below the ground."));
    if (!ground)
        note(QStringLiteral("The header has no ground elevation."));

    const std::optional<Quantity> datum = quantity(QStringLiteral("EPD"));
    if (kb && datum && m_proposal.kbM > 0 && datum->value * host::metresPerFoot > m_proposal.kbM + 1)
        note(QStringLiteral("The elevations may be above the permanent datum (EPD %1), not above sea level.")
                 .arg(datum->value));
}

void Proposer::proposeTotalDepth()
{
    constexpr double deepest = 20000;
    std::optional<Length> largest;
    for (const QString &mnemonic : list("STOP STRT TD TDD DEPTH_DRILLER")) {
        const std::optional<Quantity> found = quantity(mnemonic);
        const std::optional<Length> depth = found ? length(*found, 0, deepest, m_indexUnit) : std::nullopt;
        if (depth && (!largest || depth->metres > largest->metres))
            largest = depth;
    }
    m_proposal.totalDepthM = useDepth(largest);
    if (m_proposal.totalDepthM <= 0)
        note(QStringLiteral("The header has no total depth; it is 0."));
}

void Proposer::noteConversions()
{
    if (!m_fromFeet.isEmpty())
        note(QStringLiteral("Converted from feet: %1.").arg(m_fromFeet.join(QStringLiteral(", "))));
    if (!m_fromMetres.isEmpty())
        note(QStringLiteral("Converted from metres: %1.").arg(m_fromMetres.join(QStringLiteral(", "))));
}

} // namespace

QString nameFrom(const WellProposal &proposal, NameSource source)
{
    const QString fileName = QFileInfo(proposal.file).completeBaseName();
    QStringList names{proposal.wellName, proposal.uwi, fileName};
    if (source == NameSource::Uwi)
        names.swapItemsAt(0, 1);
    if (source == NameSource::File)
        return fileName;
    names.removeAll(QString());
    return names.value(0);
}

QString nameNote(const WellProposal &proposal, NameSource source)
{
    const bool isFound =
        source == NameSource::File || !(source == NameSource::Uwi ? proposal.uwi : proposal.wellName).isEmpty();
    if (isFound)
        return {};
    const QString missing =
        source == NameSource::Uwi ? QStringLiteral("unique well id") : QStringLiteral("well name");
    const QString other = source == NameSource::Uwi ? proposal.wellName : proposal.uwi;
    const QString otherName =
        source == NameSource::Uwi ? QStringLiteral("well name") : QStringLiteral("unique well id");
    return other.isEmpty() ? QStringLiteral("There is no %1; the file's name is used.").arg(missing)
                           : QStringLiteral("There is no %1; the %2 is used.").arg(missing, otherName);
}

WellProposal proposeWell(const QString &file, const las::Header &header, DepthUnit surveyUnit)
{
    return Proposer(file, header, surveyUnit).proposal();
}

} // namespace survey
