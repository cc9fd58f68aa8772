#pragma once

#include <QByteArray>
#include <QPolygonF>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QTransform>
#include <QVector>

#include <cmath>

/// What a PDF file of Qt's writer draws, read from the file's own bytes: no library that might forgive errors.
namespace pdf {

constexpr double mmPerPoint = 25.4 / 72;

/// A line or an outline with the operator that paints it, in mm from the page's upper left corner.
struct Path
{
    QVector<QPolygonF> lines;
    QByteArray painted; ///< "S", "f"…
};

struct Page
{
    QSizeF sizeMm;
    QVector<Path> paths;
};

struct File
{
    QVector<Page> pages;
    QVector<QByteArray> contents; ///< what each page is made of
    bool hasEmbeddedFonts = false;
    bool isComplete = false;
};

inline QByteArray inflated(const QByteArray &stream)
{
    const char size[4] = {0, 0, 16, 0}; // a guess: it grows
    return qUncompress(QByteArray(size, 4) + stream);
}

inline Page readPage(const QByteArray &content, const QSizeF &points)
{
    Page page{points * mmPerPoint, {}};
    const QTransform toMm =
        QTransform(1, 0, 0, -1, 0, points.height()) * QTransform::fromScale(mmPerPoint, mmPerPoint);
    QVector<QTransform> stack{QTransform()};
    QVector<double> numbers;
    QVector<QPolygonF> lines;
    const auto place = [&](int fromEnd) {
        return (stack.last() * toMm)
            .map(QPointF(numbers.at(numbers.size() - fromEnd), numbers.at(numbers.size() - fromEnd + 1)));
    };
    bool isText = false;
    for (const QByteArray &token : content.simplified().split(' ')) {
        bool isNumber = false;
        const double number = token.toDouble(&isNumber);
        if (isNumber) {
            numbers.append(number);
            continue;
        }
        if (token == "BT" || token == "ET")
            isText = token == "BT";
        else if (token == "q")
            stack.append(stack.last());
        else if (token == "Q" && stack.size() > 1)
            stack.removeLast();
        else if (token == "cm" && numbers.size() >= 6)
            stack.last() = QTransform(numbers.at(numbers.size() - 6), numbers.at(numbers.size() - 5),
                                      numbers.at(numbers.size() - 4), numbers.at(numbers.size() - 3),
                                      numbers.at(numbers.size() - 2), numbers.last())
                * stack.last();
        else if (!isText && token == "m" && numbers.size() >= 2)
            lines.append(QPolygonF(QVector<QPointF>{place(2)}));
        else if (!isText && (token == "l" || token == "c") && numbers.size() >= 2 && !lines.isEmpty())
            lines.last().append(place(2));
        else if (token == "re" && numbers.size() >= 4) {
            const QPointF corner = place(4);
            const QPointF other = (stack.last() * toMm)
                                      .map(QPointF(numbers.at(numbers.size() - 4) + numbers.at(numbers.size() - 2),
                                                   numbers.at(numbers.size() - 3) + numbers.last()));
            lines.append(QPolygonF(QRectF(corner, other).normalized()));
        } else if (token == "S" || token == "f" || token == "f*" || token == "B" || token == "B*" || token == "n"
                   || token == "W" || token == "W*") {
            if (!token.startsWith('W')) {
                page.paths.append({lines, token});
                lines.clear();
            }
        }
        numbers.clear();
    }
    return page;
}

/// Whether each object stands where the file's table says, and its stream is as long as it says.
inline bool hasSoundTable(const QByteArray &bytes)
{
    const int told = bytes.lastIndexOf("startxref\n");
    const int table = bytes.mid(told + 10).split('\n').first().trimmed().toInt();
    QList<QByteArray> rows = bytes.mid(table, told - table).split('\n');
    if (told < 0 || rows.size() < 3 || rows.takeFirst() != "xref")
        return false;
    const int count = rows.takeFirst().split(' ').last().toInt();
    if (rows.value(count) != "trailer")
        return false;
    int objects = 0;
    for (int i = 1; i < count; ++i) {
        const int place = rows.at(i).left(10).toInt();
        if (!rows.at(i).contains(" n"))
            continue; // free
        ++objects;
        if (!bytes.mid(place).startsWith(QByteArray::number(i) + " 0 obj\n"))
            return false;
        const int end = bytes.indexOf("endobj", place);
        static const QRegularExpression lengthOf(QStringLiteral("/Length (\\d+) 0 R"));
        const QRegularExpressionMatch length = lengthOf.match(QString::fromLatin1(bytes.mid(place, 200)));
        if (!length.hasMatch() || length.capturedStart() > end - place)
            continue;
        const int lengthPlace = rows.at(length.captured(1).toInt()).left(10).toInt();
        const int size = bytes.mid(bytes.indexOf('\n', lengthPlace) + 1, 12).split('\n').first().toInt();
        const int start = bytes.indexOf("stream\n", place) + 7;
        if (!bytes.mid(start + size).startsWith("\nendstream\nendobj\n"))
            return false;
    }
    return objects > 0 && bytes.count("\nendobj\n") == objects;
}

inline File read(const QByteArray &bytes)
{
    File file;
    file.isComplete = bytes.startsWith("%PDF-") && bytes.trimmed().endsWith("%%EOF") && hasSoundTable(bytes);
    file.hasEmbeddedFonts = bytes.contains("/FontFile");
    const auto object = [&bytes](int number) {
        const QByteArray head = '\n' + QByteArray::number(number) + " 0 obj";
        const int from = bytes.indexOf(head) + head.size();
        return bytes.mid(from, bytes.indexOf("endobj", from) - from);
    };
    static const QRegularExpression pageObject(QStringLiteral("/Type /Page\\b(?!s)"));
    static const QRegularExpression box(QStringLiteral("/MediaBox \\[0 0 ([\\d.]+) ([\\d.]+)\\]"));
    static const QRegularExpression contents(QStringLiteral("/Contents (\\d+) 0 R"));
    auto found = pageObject.globalMatch(QString::fromLatin1(bytes.constData(), bytes.size()));
    while (found.hasNext()) {
        const int from = found.next().capturedStart();
        const QString head = QString::fromLatin1(bytes.mid(from, 600));
        const QRegularExpressionMatch size = box.match(head);
        const QByteArray content = object(contents.match(head).captured(1).toInt());
        const int start = content.indexOf("stream\n") + 7;
        const QByteArray stream = content.mid(start, content.indexOf("\nendstream") - start);
        file.contents.append(content.contains("FlateDecode") ? inflated(stream) : stream);
        file.pages.append(
            readPage(file.contents.last(), QSizeF(size.captured(1).toDouble(), size.captured(2).toDouble())));
    }
    return file;
}

/// How far from a point the nearest corner of the page's lines is, mm.
inline double distanceOfCorner(const Page &page, const QPointF &mm)
{
    double nearest = 1e9;
    for (const Path &path : page.paths)
        for (const QPolygonF &line : path.lines)
            for (const QPointF &corner : line)
                nearest = std::min(nearest, std::hypot(corner.x() - mm.x(), corner.y() - mm.y()));
    return nearest;
}

} // namespace pdf
