#include "fuzz/fuzzcheck.h"
#include "templates/curverows.h"

namespace {

TemplateCurveRow rowOf(const TemplateCurveInfo &curve)
{
    TemplateCurveRow row;
    row.group = curve.group;
    row.curve = curve.curve;
    row.minimum = QString::number(curve.minimum, 'g', 17);
    row.maximum = QString::number(curve.maximum, 'g', 17);
    row.color = curve.color;
    row.leftFillIndex = curve.leftFillIndex;
    row.leftFillColor = curve.leftFillColor;
    row.rightFillIndex = curve.rightFillIndex;
    row.rightFillColor = curve.rightFillColor;
    row.leftUpTo = curve.leftUpTo;
    row.rightUpTo = curve.rightUpTo;
    row.lineTypeIndex = curve.lineTypeIndex;
    row.lineWidthIndex = curve.lineWidthIndex;
    row.isCalibrationShown = curve.isCalibrationShown;
    row.pointColor = curve.pointColor;
    row.pointSize = curve.pointSize;
    row.pointShape = curve.pointShape == 1 ? QStringLiteral("Circle") : QStringLiteral("Rectangle");
    return row;
}

QByteArray written(const TrackInfo &track)
{
    QVector<TemplateCurveRow> rows;
    for (const TemplateCurveInfo &curve : track.curves)
        rows.append(rowOf(curve));
    return trackBytes(QStringLiteral("Linear"), rows);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const TrackInfo read = parseTrack(bytesOf(data, size), QStringLiteral("Track_1"));
    for (const TemplateCurveInfo &curve : read.curves) {
        check(curve.penStyle >= 1 && curve.penStyle <= 5, "a pen style is one of five");
        check(curve.penWidth >= 1 && curve.penWidth <= 5, "a pen width is one of five");
        check(curve.isLeftFillOn == (curve.leftFillIndex != 0), "a fill is on where its index is not 0");
        check(curve.isRightFillOn == (curve.rightFillIndex != 0), "a fill is on where its index is not 0");
        check(curve.pointShape == 1 || curve.pointShape == 2, "a point is a circle or a rectangle");
    }
    const QByteArray bytes = written(read);
    const TrackInfo again = parseTrack(bytes, QStringLiteral("Track_1"));
    check(again.curves.size() == read.curves.size(), "a written track reads back with all curves");
    check(written(again) == bytes, "a written track reads back the same");
    // As the editors read it, show it and write it back.
    CurveRows rows(read);
    const QByteArray edited = rows.bytes();
    const TrackInfo stored = rows.track(QStringLiteral("Track_1"));
    check(CurveRows(stored).bytes() == edited, "what an editor wrote stays the same");
    for (int i = 0; i < stored.curves.size() && !rows.isDepth(); ++i)
        check(stored.curves.at(i).minimum == read.curves.at(i).minimum
                  && stored.curves.at(i).maximum == read.curves.at(i).maximum,
              "an editor keeps the values");
    rows.setType(DepthTrack);
    rows.setType(read.type);
    check(rows.size() == CurveRows(read).size(), "a track that was a depth track for a while keeps its rows");
    static_cast<void>(rows.problem());
    if (rows.size() > 1) {
        rows.move(0, rows.size() - 1);
        rows.remove(0);
        check(rows.size() == CurveRows(read).size() - 1, "one row is gone");
    }
    return 0;
}
