#pragma once

#include "paintrecorder.h"

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QVector>

#include <cmath>

/// One line of text as it was drawn: with what font and colour, and which box of the device its letters take.
struct DrawnText
{
    QString text;
    QString family;
    double pointSize = 0; ///< -1 where the size is in pixels
    int pixelSize = 0; ///< -1 where the size is in points
    bool isBold = false;
    QColor color;
    QRectF box; ///< hundredths of a pixel

    friend bool operator==(const DrawnText &a, const DrawnText &b)
    {
        return a.text == b.text && a.family == b.family && qFuzzyCompare(a.pointSize, b.pointSize)
            && a.pixelSize == b.pixelSize && a.isBold == b.isBold && a.color == b.color && a.box == b.box;
    }
};

inline char *toString(const QVector<DrawnText> &texts)
{
    QString lines;
    for (const DrawnText &t : texts)
        lines += QStringLiteral("\n\"%1\" %2 %3pt %4px%5 %6 at %7,%8 %9x%10")
                     .arg(t.text, t.family)
                     .arg(t.pointSize)
                     .arg(t.pixelSize)
                     .arg(t.isBold ? QStringLiteral(" bold") : QString(), t.color.name())
                     .arg(t.box.x())
                     .arg(t.box.y())
                     .arg(t.box.width())
                     .arg(t.box.height());
    return qstrdup(qUtf8Printable(lines));
}

/// Notes the texts.
class TextEngine : public PaintRecorderEngine
{
public:
    void drawTextItem(const QPointF &place, const QTextItem &item) override
    {
        const QFont font = painter()->font();
        const QRectF box = painter()->deviceTransform().mapRect(
            QRectF(place.x(), place.y() - item.ascent(), item.width(), item.ascent() + item.descent()));
        const auto rounded = [](double value) { return std::round(100 * value) / 100; };
        texts.append({item.text(), font.family(), font.pointSizeF(), font.pixelSize(), font.bold(),
                      painter()->pen().color(),
                      QRectF(rounded(box.x()), rounded(box.y()), rounded(box.width()), rounded(box.height()))});
    }

    QVector<DrawnText> texts;
};

/// Notes the texts that are drawn. What an item drew is compared with what was drawn here by the rule for it: QPainter
/// resolves alignment and breaks lines before a device sees them.
class TextRecorder : public PaintRecorder<TextEngine>
{
public:
    const QVector<DrawnText> &texts() const { return engine().texts; }

    /// The texts that \a paint(QPainter &) draws.
    template<class Paint>
    static QVector<DrawnText> record(const Paint &paint)
    {
        TextRecorder recorder;
        QPainter painter(&recorder);
        paint(painter);
        painter.end();
        return recorder.texts();
    }
    /// The texts of a part of a scene, in its coordinates less the corner of the part.
    static QVector<DrawnText> recordScene(QGraphicsScene &scene, const QRectF &part)
    {
        const QVector<DrawnText> drawn =
            record([&](QPainter &painter) { scene.render(&painter, QRectF(QPointF(), part.size()), part); });
        QVector<DrawnText> inside;
        for (const DrawnText &text : drawn)
            if (text.box.intersects(QRectF(QPointF(), part.size())))
                inside.append(text);
        return inside;
    }
};
