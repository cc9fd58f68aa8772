#include "correlation/correlationmissing.h"

#include "datastore/textfields.h"

#include <QSet>

namespace correlation {

namespace {

constexpr int longestList = 12; // a dialog has no room for more

class MissingList
{
public:
    void tell(const QString &what)
    {
        if (!m_told.contains(what))
            m_missing.append(what);
        m_told.insert(what);
    }
    QString text() const
    {
        QStringList named = m_missing.mid(0, longestList);
        if (m_missing.size() > longestList)
            named.append(QStringLiteral("and %1 more").arg(m_missing.size() - longestList));
        return named.join(QStringLiteral(", "));
    }

private:
    QStringList m_missing;
    QSet<QString> m_told;
};

} // namespace

QString missingText(const CorrelationProperties &properties, const KnownNames &known, const QStringList &markers)
{
    MissingList missing;
    bool isWellMissing = false;
    for (const CorrelationWell &well : properties.wells) {
        if (known.isWell(well.wellName)) {
            if (!known.isTemplate(well.wellName, well.templateName))
                missing.tell(QStringLiteral("the template \"%1\" of %2").arg(well.templateName, well.wellName));
            continue;
        }
        missing.tell(QStringLiteral("the well \"%1\"").arg(well.wellName));
        isWellMissing = true;
    }
    QSet<QString> names;
    QSet<QString> namesInFields; // as zones have them
    for (const QString &name : markers) {
        names.insert(name.trimmed());
        namesInFields.insert(textfields::fieldName(name.trimmed()));
    }
    const auto tell = [&missing](const QString &marker) {
        missing.tell(QStringLiteral("the marker \"%1\"").arg(marker));
    };
    const auto lookInField = [&](const QString &marker) {
        if (!names.contains(marker.trimmed()) && !namesInFields.contains(marker.trimmed()))
            tell(marker);
    };
    for (const QString &marker : properties.markers)
        if (!names.contains(marker.trimmed()))
            tell(marker);
    for (const CorrelationZone &zone : properties.zones) {
        if (!zone.isStartUserDepth)
            lookInField(zone.start);
        if (!zone.isEndUserDepth)
            lookInField(zone.end);
    }
    if (missing.text().isEmpty())
        return {};
    const QString text =
        QStringLiteral("Not found in the survey, and lost when this is saved: %1.").arg(missing.text());
    return isWellMissing
        ? text
            + QStringLiteral(
                " The row of such a well shows the survey's first one: choose another, or remove the row.")
        : text;
}

} // namespace correlation
