#include "logview/paper/pdflines.h"

#include "logview/paper/deflate.h"

#include <QPainterPath>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <numeric>
#include <vector>

namespace logview {

namespace {

// Left of any page at any resolution.
constexpr int markX = -1000000;
const QByteArray markStart = QByteArray::number(markX) + ' ';

// The lines as operators of a page.
QByteArray operatorsOf(const DotLines &lines, const QPointF &origin)
{
    constexpr int mostDigits = 11;
    constexpr int mostBytes = 2 * mostDigits + 4;
    QByteArray bytes(mostBytes * static_cast<int>(lines.corners.size()), Qt::Uninitialized);
    char *at = bytes.data();
    auto start = lines.starts.begin();
    for (size_t i = 0; i < lines.corners.size(); ++i) {
        const QPointF corner = lines.corners[i] - origin;
        at = std::to_chars(at, at + mostDigits, static_cast<int>(corner.x())).ptr;
        *at++ = ' ';
        at = std::to_chars(at, at + mostDigits, static_cast<int>(corner.y())).ptr;
        *at++ = ' ';
        const bool isFirst = start != lines.starts.end() && *start == i;
        start += isFirst ? 1 : 0;
        *at++ = isFirst ? 'm' : 'l';
        *at++ = '\n';
    }
    return {bytes.constData(), static_cast<int>(at - bytes.constData())};
}

/// What a page is made of, compressed, and the numbers of its lines. Empty where a mark is none of theirs.
struct FilledPage
{
    QByteArray content;
    QVector<int> lines;
};

// \a content is room that pages share.
FilledPage filledPage(const QByteArray &stream, const QVector<QByteArray> &lines, QByteArray &content)
{
    const QByteArray marked = inflated(stream);
    FilledPage page;
    content.resize(0);
    int from = 0;
    for (int at = marked.indexOf(markStart); at >= 0; at = marked.indexOf(markStart, from)) {
        const int line = std::atoi(marked.constData() + at + markStart.size());
        const QByteArray mark =
            markStart + QByteArray::number(line) + " m\n" + markStart + QByteArray::number(line + 1) + " l\n";
        if (line < 0 || line >= lines.size() || marked.mid(at, mark.size()) != mark)
            return {};
        content.append(marked.constData() + from, at - from);
        content += lines.at(line);
        page.lines.append(line);
        from = at + mark.size();
    }
    content.append(marked.constData() + from, marked.size() - from);
    if (page.lines.isEmpty())
        page.content = stream;
    else
        page.content =
            deflated(content, content.size() > 2 * marked.size() ? StreamKind::Lines : StreamKind::Operators);
    return page;
}

/// A file as Qt's writer lays it out: objects one after the other, each with its place in a table at the end.
class WrittenFile
{
public:
    explicit WrittenFile(const QByteArray &pdf)
        : m_pdf(pdf)
    {
        const int told = m_pdf.lastIndexOf("startxref\n");
        const int table = told < 0 ? -1 : numberAt(told + 10);
        const QByteArray head = "xref\n0 ";
        if (table < 0 || m_pdf.mid(table, head.size()) != head)
            return;
        const int count = numberAt(table + head.size());
        int entry = m_pdf.indexOf('\n', table + head.size()) + 1;
        m_trailer = entry + count * entrySize;
        if (!m_pdf.mid(m_trailer).startsWith("trailer\n"))
            return;
        m_table = table;
        for (int i = 0; i < count; ++i, entry += entrySize)
            m_places.append(m_pdf.at(entry + 17) == 'n' ? numberAt(entry) : 0);
    }

    struct Stream
    {
        int object = 0;
        int lengthObject = 0;
        int start = 0;
        int size = 0;
    };
    // The contents of the pages; none where the file has another form.
    QVector<Stream> pages() const
    {
        QVector<Stream> found;
        for (int i = 0; i < m_places.size(); ++i) {
            const int place = m_places.at(i);
            if (place == 0 || !m_pdf.mid(place, 40).contains("obj\n<<\n/Type /Page\n"))
                continue;
            Stream page;
            page.object = numberBehind("/Contents ", place);
            if (page.object <= 0 || page.object >= m_places.size())
                return {};
            const int head = m_places.at(page.object);
            page.lengthObject = numberBehind("/Length ", head);
            if (page.lengthObject <= 0 || page.lengthObject >= m_places.size())
                return {};
            page.start = m_pdf.indexOf(streamHead, head) + streamHead.size();
            page.size = numberBehind(" obj\n", m_places.at(page.lengthObject));
            if (m_pdf.mid(page.start + page.size, streamEnd.size()) != streamEnd)
                return {};
            found.append(page);
        }
        return found;
    }

    QByteArray withContents(const QVector<Stream> &pages, const std::vector<FilledPage> &filled) const
    {
        QVector<QByteArray> changed(m_places.size());
        for (int i = 0; i < pages.size(); ++i) {
            const Stream &page = pages.at(i);
            const QByteArray &content = filled[static_cast<size_t>(i)].content;
            const int head = m_places.at(page.object);
            changed[page.object] = m_pdf.mid(head, page.start - head) + content + streamEnd + "endobj\n";
            changed[page.lengthObject] = QByteArray::number(page.lengthObject) + " 0 obj\n"
                + QByteArray::number(content.size()) + "\nendobj\n";
        }
        QVector<int> order;
        for (int i = 0; i < m_places.size(); ++i)
            if (m_places.at(i) > 0)
                order.append(i);
        std::sort(order.begin(), order.end(), [this](int a, int b) { return m_places.at(a) < m_places.at(b); });
        QByteArray bytes = m_pdf.left(order.isEmpty() ? 0 : m_places.at(order.first()));
        const auto larger = [](int size, const FilledPage &page) { return size + page.content.size(); };
        bytes.reserve(std::accumulate(filled.begin(), filled.end(), m_pdf.size(), larger));
        QVector<int> places(m_places.size());
        for (int i = 0; i < order.size(); ++i) {
            const int object = order.at(i);
            const int place = m_places.at(object);
            const int end = i + 1 < order.size() ? m_places.at(order.at(i + 1)) : m_table;
            places[object] = bytes.size();
            bytes += changed.at(object).isEmpty() ? m_pdf.mid(place, end - place) : changed.at(object);
        }
        const int table = bytes.size();
        const int entries = m_trailer - m_places.size() * entrySize;
        bytes += m_pdf.mid(m_table, entries - m_table);
        for (int i = 0; i < places.size(); ++i) {
            const QByteArray entry = m_pdf.mid(entries + i * entrySize, entrySize);
            bytes +=
                m_places.at(i) > 0 ? QByteArray::number(places.at(i)).rightJustified(10, '0') + entry.mid(10) : entry;
        }
        const int told = m_pdf.lastIndexOf("startxref\n");
        return bytes + m_pdf.mid(m_trailer, told - m_trailer) + "startxref\n" + QByteArray::number(table)
            + "\n%%EOF\n";
    }

private:
    static constexpr int entrySize = 20;
    const QByteArray streamHead = "stream\n";
    const QByteArray streamEnd = "\nendstream\n";

    int numberAt(int place) const { return std::atoi(m_pdf.constData() + std::min(place, m_pdf.size())); }
    int numberBehind(const QByteArray &key, int place) const
    {
        const int found = m_pdf.indexOf(key, place);
        return found < 0 ? -1 : numberAt(found + key.size());
    }

    QByteArray m_pdf;
    int m_table = 0;
    int m_trailer = 0;
    QVector<int> m_places; // 0 for none
};

} // namespace

bool PdfLines::canHold(const DotLines &lines)
{
    constexpr double most = 1e8;
    return std::all_of(lines.corners.begin(), lines.corners.end(), [](const QPointF &corner) {
        return std::abs(corner.x()) < most && std::abs(corner.y()) < most;
    });
}

QPainterPath PdfLines::markFor(const DotLines &lines, const QPointF &origin)
{
    const int number = m_lines.size();
    m_lines.append(operatorsOf(lines, origin));
    QPainterPath mark(QPointF(markX, number));
    mark.lineTo(markX, number + 1);
    return mark;
}

QByteArray PdfLines::writtenInto(const QByteArray &pdf) const
{
    const WrittenFile file(pdf);
    const QVector<WrittenFile::Stream> pages = file.pages();
    std::vector<FilledPage> filled;
    filled.reserve(static_cast<size_t>(pages.size()));
    QByteArray content;
    content.reserve(1 << 18);
    for (const WrittenFile::Stream &page : pages)
        filled.push_back(filledPage(pdf.mid(page.start, page.size), m_lines, content));
    QVector<int> lines;
    for (const FilledPage &page : filled) {
        if (page.content.isEmpty())
            return {};
        lines += page.lines;
    }
    std::sort(lines.begin(), lines.end());
    QVector<int> all(m_lines.size());
    std::iota(all.begin(), all.end(), 0);
    return lines == all ? file.withContents(pages, filled) : QByteArray();
}

} // namespace logview
