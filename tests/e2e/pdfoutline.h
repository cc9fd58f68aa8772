#pragma once

#include <QByteArray>
#include <QMap>
#include <QRectF>
#include <QRegularExpression>
#include <QString>
#include <QVector>

#include <functional>

/// The outline and the links of a PDF file whose objects are no streams of objects, read from its bytes.
namespace outline {

struct Entry
{
    QString title;
    int level = 1;
    int page = -1; ///< from 0
    double y = 0; ///< points from the page's lower edge
};

struct Link
{
    int page = -1;
    QRectF area; ///< points from the lower left corner
    int toPage = -1;
    double toY = 0;
};

struct File
{
    int pageCount = 0;
    QVector<Entry> entries;
    QVector<Link> links; ///< by page
};

/// Whether each table of the file, the newest first, tells where its objects stand, and leads to the one before.
inline bool hasSoundTables(const QByteArray &bytes)
{
    const auto numberAt = [&bytes](int place) { return bytes.mid(place, 12).trimmed().split('\n').first().toInt(); };
    int tables = 0;
    for (int place = numberAt(bytes.lastIndexOf("startxref\n") + 10); place > 0;) {
        ++tables;
        const int trailer = bytes.indexOf("trailer", place);
        QList<QByteArray> rows = bytes.mid(place, trailer - place).split('\n');
        if (rows.takeFirst() != "xref" || trailer < 0)
            return false;
        while (rows.size() > 1) {
            const QList<QByteArray> section = rows.takeFirst().split(' ');
            for (int i = 0; i < section.value(1).toInt(); ++i) {
                const QByteArray row = rows.takeFirst();
                const int object = section.first().toInt() + i;
                if (row.size() != 19 // and its end of line
                    || (row.contains(" n")
                        && !bytes.mid(row.left(10).toInt()).startsWith(QByteArray::number(object) + " 0 obj\n")))
                    return false;
            }
        }
        const int end = bytes.indexOf("startxref", trailer);
        const int previous = bytes.mid(trailer, end - trailer).indexOf("/Prev ");
        place = previous < 0 ? 0 : numberAt(trailer + previous + 6);
    }
    return tables > 0;
}

inline File read(const QByteArray &bytes)
{
    // The last form of an object counts.
    QMap<int, QByteArray> objects;
    const QString all = QString::fromLatin1(bytes.constData(), bytes.size());
    static const QRegularExpression head(QStringLiteral("(?:^|\\n)(\\d+) 0 obj\\n"));
    auto found = head.globalMatch(all);
    while (found.hasNext()) {
        const QRegularExpressionMatch match = found.next();
        const int from = match.capturedEnd();
        objects[match.captured(1).toInt()] = bytes.mid(from, bytes.indexOf("endobj", from) - from);
    }
    const auto referencesOf = [](const QByteArray &text) {
        QVector<int> numbers;
        static const QRegularExpression reference(QStringLiteral("(\\d+) 0 R"));
        auto each = reference.globalMatch(QString::fromLatin1(text));
        while (each.hasNext())
            numbers.append(each.next().captured(1).toInt());
        return numbers;
    };
    const auto valueOf = [](const QByteArray &object, const char *key) {
        const int from = object.indexOf(QByteArray(key) + ' ');
        return from < 0 ? QByteArray() : object.mid(from + int(qstrlen(key)) + 1).split('\n').first();
    };
    const auto reference = [&](const QByteArray &object, const char *key) {
        return referencesOf(valueOf(object, key)).value(0, -1);
    };
    QByteArray catalog;
    for (const QByteArray &object : qAsConst(objects))
        if (object.contains("/Type /Catalog"))
            catalog = object;
    const QByteArray tree = objects.value(reference(catalog, "/Pages"));
    const QVector<int> pages = referencesOf(tree.mid(tree.indexOf("/Kids")).split(']').first());

    File file;
    file.pageCount = pages.size();
    const auto target = [&](const QByteArray &object, int *page, double *y) {
        const QByteArray place = valueOf(object, "/Dest");
        *page = pages.indexOf(referencesOf(place).value(0));
        *y = place.split(' ').value(5).toDouble();
    };
    const std::function<void(int, int)> readEntries = [&](int first, int level) {
        for (int each = first; each > 0; each = reference(objects.value(each), "/Next")) {
            const QByteArray object = objects.value(each);
            Entry entry;
            entry.level = level;
            const QByteArray digits = valueOf(object, "/Title").mid(5).chopped(1); // "<FEFF…>"
            for (int i = 0; i < digits.size(); i += 4)
                entry.title += QChar(digits.mid(i, 4).toUShort(nullptr, 16));
            target(object, &entry.page, &entry.y);
            file.entries.append(entry);
            readEntries(reference(object, "/First"), level + 1);
        }
    };
    readEntries(reference(objects.value(reference(catalog, "/Outlines")), "/First"), 1);
    for (int page = 0; page < pages.size(); ++page) {
        for (const int each : referencesOf(objects.value(reference(objects.value(pages.at(page)), "/Annots")))) {
            Link link;
            link.page = page;
            const QList<QByteArray> corners = valueOf(objects.value(each), "/Rect").mid(1).chopped(1).split(' ');
            link.area = QRectF(QPointF(corners.value(0).toDouble(), corners.value(1).toDouble()),
                               QPointF(corners.value(2).toDouble(), corners.value(3).toDouble()));
            target(objects.value(each), &link.toPage, &link.toY);
            file.links.append(link);
        }
    }
    return file;
}

} // namespace outline
