#pragma once

#include "host/hostrecords.h"
#include "survey/depthunit.h"
#include "survey/topsfile.h"

/// Changes of a well's set of markers as a user makes them; what is wrong with them is a sentence, empty when nothing is.
namespace survey {

QString markerNameProblem(const QVector<host::Marker> &markers, int index, const QString &name);
/// \a text is a depth in \a unit, \a totalDepthM the end of the well.
QString markerDepthProblem(const QString &text, DepthUnit unit, double totalDepthM);

/// What the tops of a file make of a set of markers.
struct TopsMerge
{
    QVector<host::Marker> markers;
    int added = 0;
    int moved = 0; ///< markers of the same name with another depth
    double furthestM = 0; ///< by how much at most
    int unchanged = 0; ///< markers that stand where the file has them
    QStringList outside; ///< names of tops below the end of the well, which are left out
    QStringList repeated; ///< names that the file has at several depths: the further tops got numbers behind theirs

    bool changesAnything() const { return added > 0 || moved > 0; }
};

/// Markers that no top names stay. Depths of which the file does not tell the unit are in \a unit. The colour of a new marker
/// comes from its name, so that a top has the same in all wells. A depth in the survey's own unit is stored as it stands.
TopsMerge withTops(const QVector<host::Marker> &markers, const QVector<TopsLine> &tops, DepthUnit unit,
                   double totalDepthM, DepthUnit surveyUnit = DepthUnit::Metre);

/// A depth in the survey's unit as a marker has it, in metres: a survey in feet stores the same number again.
float markerDepthM(double depth, DepthUnit surveyUnit);

} // namespace survey
