#pragma once

#include "survey/depthunit.h"

#include <QByteArray>
#include <QStringList>
#include <QVector>

#include <optional>

namespace survey {

/// One line of a tops file.
struct TopsLine
{
    QString well; ///< empty in a file of one well
    QString name;
    double depth = 0; ///< along hole
    std::optional<DepthUnit> unit = {}; ///< of the depth, where the file tells it
    int number = 0; ///< of the line in the file, from 1
    QString text = {}; ///< of a line that is left out, as it stands
    QString problem = {}; ///< why it is left out; no sentence
};

struct TopsFile
{
    QVector<TopsLine> lines;
    QVector<TopsLine> leftOut; ///< those without a name, a depth, or in a file of many wells a well
    std::optional<DepthUnit> unit; ///< where the titles tell it
    bool hasWells = false;
    QString problem; ///< why the file is no table of tops, behind its name and a colon; empty when it is one
};

/// Reads a table of tops as text: fields between tabs, semicolons, commas or blanks, with or without a line of titles.
/// Titles tell the columns ("MD", "Formation", "Well" and the like) and may tell the unit of the depths, there ("MD (ft)")
/// or in a line of units below; without them the first column of numbers is the depth and the first of texts the name.
/// Decimals have a point, or a comma where commas part no fields. Lines without a name or a depth are left out; a null value
/// (-9999) is neither.
TopsFile parseTops(const QByteArray &bytes);

/// The tops of one well: all of a file of one well, else those whose well is one of \a names (the well's name, its UWI),
/// whatever their letter case, blanks and punctuation.
QVector<TopsLine> topsOf(const TopsFile &file, const QStringList &names);
/// The wells that the tops name, as they are written first, each once; none in a file of one well without a name.
QStringList wellsOf(const TopsFile &file);
/// How many lines of the well are left out.
int leftOutOf(const TopsFile &file, const QStringList &names);

/// A name without what people write in different ways: letter case, blanks and punctuation.
QString comparableName(const QString &name);

} // namespace survey
