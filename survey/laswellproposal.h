#pragma once

#include "las/lasheader.h"
#include "survey/depthunit.h"

#include <QString>
#include <QStringList>

namespace survey {

/// What a new well of the survey may start with, as a LAS header tells it. Lengths are metres; 0 stands for
/// what the header does not tell.
struct WellProposal
{
    QString file; ///< path of the LAS file
    QString wellName; ///< as WELL gives it; empty when it is missing, as is uwi
    QString uwi;
    QString name; ///< nameFrom() WELL; never empty but for a file without a name
    double x = 0; ///< surface coordinates
    double y = 0;
    double kbM = 0; ///< kelly bushing above datum
    double groundM = 0; ///< ground level above datum, negative for a sea bed
    double totalDepthM = 0;
    QStringList logs; ///< mnemonics of the curves that the header names, without the depth
    QStringList notes; ///< sentences for the user: what is missing, converted or in doubt
};

/// Proposes a well for \a header, read from \a file. Items of sections W and P are used; an item that is no
/// number, is the file's null value or one of the usual ones, or lies outside what is possible is treated as
/// absent. Feet become metres (0.3048 m); lengths without a unit are taken in the index's unit, coordinates
/// in metres. The notes tell what is converted on the way into a survey whose depths are in \a surveyUnit.
///
/// Coordinates: X and Y, EASTING and NORTHING and the like,
/// else two numbers in LOC. KB: EKB, KB and the like, a numeric LMF, EREF (unless DREF is the ground), ELEV,
/// at last a derrick floor. Ground: EGL, GL and the like. Total depth: the largest of STOP, STRT, TD and TDD.
WellProposal proposeWell(const QString &file, const las::Header &header, DepthUnit surveyUnit = DepthUnit::Metre);

/// What a well is named after.
enum class NameSource { Well, Uwi, File };

/// The name that the source gives. What is missing is replaced: WELL by UWI (or API), UWI by WELL, both by the file's
/// base name.
QString nameFrom(const WellProposal &proposal, NameSource source);
/// A sentence that tells of such a replacement; empty without one.
QString nameNote(const WellProposal &proposal, NameSource source);

} // namespace survey
