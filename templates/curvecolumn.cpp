#include "templates/curvecolumn.h"

QStringList curvecolumn::headings()
{
    QStringList texts;
    for (const char *text : {"Select Group", "Select Curve", "Left Value", "Right Value", "Curve Color", "Left Fill",
                             "Right Fill", "Left upto", "Right upto", "Remove Curve", "Line Type", "Line Width",
                             "Calibration Points", "Point Color", "Point Size", "Point Shape"})
        texts.append(QString::fromLatin1(text));
    return texts;
}
