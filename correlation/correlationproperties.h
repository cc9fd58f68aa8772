#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

/// A well of a correlation and the template it is drawn with.
struct CorrelationWell
{
    QString wellName;
    QString templateName;
};

/// A zone shaded between neighbouring wells.
struct CorrelationZone
{
    QString name;
    QString start; ///< a marker's name, or a typed measured depth in metres
    QString end;
    QString color; ///< "#rrggbb"
    bool isVisible = true;
    bool isStartUserDepth = false; ///< the start is a typed depth
    bool isEndUserDepth = false;
};

/// What a correlation's file "properties.txt" says.
struct CorrelationProperties
{
    QString name;
    double trackWidth = 1.2; ///< inches
    double scale = 1000; ///< the N of 1:N
    QVector<CorrelationWell> wells; ///< left to right
    QStringList markers; ///< the ones to show, trimmed
    bool showsPerforations = false;
    QVector<CorrelationZone> zones;
};

namespace correlation {

/// The colour of a zone for which none was chosen.
extern const char zoneWithoutColor[];

/// The bytes of the file, lines ended by LF. Line breaks in names become blanks, "|" in a zone's texts a broken bar, so
/// that the file reads back; marker names are trimmed. A number that is not finite is written as its default.
QByteArray propertiesBytes(const CorrelationProperties &properties);

/// Tells the names of the survey from others: a line "A:B:C" may be the well "A" or the well "A:B".
struct KnownNames
{
    std::function<bool(const QString &wellName)> isWell;
    std::function<bool(const QString &wellName, const QString &templateName)> isTemplate;
};

/// Reads the file of a correlation; never fails. Counts are taken as they stand where the next key line follows them,
/// else up to that key line, so that a wrong count hides nothing. A width or scale that is no finite number counts as
/// the default, a colour that is none as zoneWithoutColor. LF, CRLF and CR end a line; a byte order mark is no part of
/// the name. \a isWhole, when given, tells whether all sections were there with as many lines as they claim.
CorrelationProperties parseProperties(const QByteArray &bytes, const KnownNames &known, bool *isWhole = nullptr);

/// The two names of a line of the wells list: of the ways to split it at a ":" the first that gives a known well and a
/// known template of it. Else, where what stands before the first ":" is no well, the first that gives a known well, or
/// else a known template: one of the two has gone. Else what stands before the first ":" and what stands before the next one.
CorrelationWell splitWellLine(const QString &line, const KnownNames &known);

} // namespace correlation
