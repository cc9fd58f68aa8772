#include "programs/pdfbookmarks.h"

#include <QMap>

namespace programs {

namespace {

QByteArray reference(int object)
{
    return QByteArray::number(object) + " 0 R";
}

QByteArray number(double value)
{
    return QByteArray::number(value, 'f', 2);
}

// In hexadecimal digits of UTF-16, which need no escapes.
QByteArray text(const QString &text)
{
    QByteArray bytes = "<FEFF";
    for (const QChar letter : text)
        bytes += QByteArray::number(letter.unicode(), 16).rightJustified(4, '0');
    return bytes + '>';
}

/// A finished file and what is added behind its end, where a reader finds the newest form of an object.
class Update
{
public:
    explicit Update(const QByteArray &pdf)
        : m_pdf(pdf)
    {
        const int told = m_pdf.lastIndexOf("startxref\n");
        m_table = told < 0 ? 0 : numberAt(told + 10);
        const int trailer = m_table > 0 ? m_pdf.indexOf("trailer\n", m_table) : -1;
        if (trailer < 0)
            return;
        m_count = numberBehind("/Size ", trailer);
        m_info = numberBehind("/Info ", trailer);
        m_catalog = numberBehind("/Root ", trailer);
        const QByteArray kids = between("/Kids \n[\n", "]", placeOf(numberBehind("/Pages ", placeOf(m_catalog))));
        for (const QByteArray &page : kids.split('\n'))
            if (page.endsWith(" 0 R"))
                m_pages.append(page.split(' ').first().toInt());
    }

    bool isValid() const { return m_count > 0 && m_catalog > 0 && m_info > 0 && !m_pages.isEmpty(); }
    bool hasPage(int page) const { return page >= 0 && page < m_pages.size(); }
    int pageObject(int page) const { return m_pages.at(page); }
    double pageHeight(int page) const
    {
        return between("/MediaBox [0 0 ", "]", placeOf(pageObject(page))).split(' ').value(1).toDouble();
    }
    /// The object that lists what a page leads to.
    int linksOf(int page) const { return numberBehind("/Annots ", placeOf(pageObject(page))); }

    int newObject() { return m_count++; }
    void write(int object, const QByteArray &content) { m_objects.insert(object, content); }
    void addToCatalog(const QByteArray &entries)
    {
        const QByteArray catalog = between("<<\n", ">>", placeOf(m_catalog));
        write(m_catalog, "<<\n" + catalog + entries + ">>");
    }

    QByteArray bytes() const
    {
        QByteArray result = m_pdf;
        QByteArray table;
        for (auto object = m_objects.begin(); object != m_objects.end(); ++object) {
            table += QByteArray::number(object.key()) + " 1\n"
                + QByteArray::number(result.size()).rightJustified(10, '0') + " 00000 n \n";
            result += QByteArray::number(object.key()) + " 0 obj\n" + object.value() + "\nendobj\n";
        }
        const int place = result.size();
        return result + "xref\n" + table + "trailer\n<<\n/Size " + QByteArray::number(m_count) + "\n/Info "
            + reference(m_info) + "\n/Root " + reference(m_catalog) + "\n/Prev " + QByteArray::number(m_table)
            + "\n>>\nstartxref\n" + QByteArray::number(place) + "\n%%EOF\n";
    }

private:
    int numberAt(int place) const { return m_pdf.mid(place, 12).split('\n').first().split(' ').first().toInt(); }
    int numberBehind(const QByteArray &key, int place) const
    {
        const int found = place < 0 ? -1 : m_pdf.indexOf(key, place);
        return found < 0 ? 0 : numberAt(found + key.size());
    }
    int placeOf(int object) const
    {
        constexpr int entrySize = 20;
        const int entries = m_pdf.indexOf('\n', m_table + 5) + 1;
        return object > 0 && object < m_count ? numberAt(entries + object * entrySize) : -1;
    }
    QByteArray between(const QByteArray &begin, const QByteArray &end, int place) const
    {
        const int from = place < 0 ? -1 : m_pdf.indexOf(begin, place);
        const int to = from < 0 ? -1 : m_pdf.indexOf(end, from);
        return to < 0 ? QByteArray() : m_pdf.mid(from + begin.size(), to - from - begin.size());
    }

    QByteArray m_pdf;
    QMap<int, QByteArray> m_objects;
    QVector<int> m_pages;
    int m_table = 0;
    int m_count = 0;
    int m_info = 0;
    int m_catalog = 0;
};

QByteArray destination(const Update &update, const PdfPlace &place)
{
    return "/Dest [" + reference(update.pageObject(place.page)) + " /XYZ 0 "
        + number(update.pageHeight(place.page) - place.top) + " null]\n";
}

void addOutline(Update &update, const QVector<PdfBookmark> &bookmarks)
{
    struct Node
    {
        int object = 0;
        int parent = -1; // among the nodes
        int previous = -1;
        int next = -1;
        QVector<int> children;
    };
    const int root = update.newObject();
    QVector<Node> nodes;
    QVector<int> top;
    for (int i = 0; i < bookmarks.size(); ++i) {
        Node node;
        node.object = update.newObject();
        for (int before = i - 1; before >= 0 && node.parent < 0; before = nodes.at(before).parent)
            if (bookmarks.at(before).level < bookmarks.at(i).level)
                node.parent = before;
        QVector<int> &siblings = node.parent < 0 ? top : nodes[node.parent].children;
        if (!siblings.isEmpty()) {
            node.previous = siblings.last();
            nodes[node.previous].next = i;
        }
        siblings.append(i);
        nodes.append(node);
    }
    const auto ends = [&nodes](const QVector<int> &children) {
        return children.isEmpty() ? QByteArray()
                                  : "/First " + reference(nodes.at(children.first()).object) + "\n/Last "
                + reference(nodes.at(children.last()).object) + '\n';
    };
    for (int i = 0; i < nodes.size(); ++i) {
        const Node &node = nodes.at(i);
        QByteArray entries = "<<\n/Title " + text(bookmarks.at(i).title) + "\n/Parent "
            + reference(node.parent < 0 ? root : nodes.at(node.parent).object) + '\n'
            + destination(update, bookmarks.at(i).place) + ends(node.children);
        if (node.previous >= 0)
            entries += "/Prev " + reference(nodes.at(node.previous).object) + '\n';
        if (node.next >= 0)
            entries += "/Next " + reference(nodes.at(node.next).object) + '\n';
        if (!node.children.isEmpty())
            entries += "/Count -" + QByteArray::number(node.children.size()) + '\n'; // closed
        update.write(node.object, entries + ">>");
    }
    update.write(root, "<<\n/Type /Outlines\n" + ends(top) + "/Count " + QByteArray::number(top.size()) + "\n>>");
    update.addToCatalog("/Outlines " + reference(root) + "\n/PageMode /UseOutlines\n");
}

void addLinks(Update &update, const QVector<PdfLink> &links)
{
    QMap<int, QByteArray> ofPages;
    for (const PdfLink &link : links) {
        const int object = update.newObject();
        const double height = update.pageHeight(link.page);
        update.write(object,
                     "<<\n/Type /Annot\n/Subtype /Link\n/Border [0 0 0]\n/Rect [" + number(link.area.left()) + ' '
                         + number(height - link.area.bottom()) + ' ' + number(link.area.right()) + ' '
                         + number(height - link.area.top()) + "]\n" + destination(update, link.place) + ">>");
        ofPages[link.page] += reference(object) + ' ';
    }
    for (auto page = ofPages.begin(); page != ofPages.end(); ++page)
        update.write(update.linksOf(page.key()), "[ " + page.value() + ']');
}

} // namespace

QByteArray withBookmarks(const QByteArray &pdf, const QVector<PdfBookmark> &bookmarks, const QVector<PdfLink> &links)
{
    Update update(pdf);
    bool isGood = update.isValid();
    for (const PdfBookmark &bookmark : bookmarks)
        isGood = isGood && update.hasPage(bookmark.place.page);
    for (const PdfLink &link : links)
        isGood =
            isGood && update.hasPage(link.page) && update.hasPage(link.place.page) && update.linksOf(link.page) > 0;
    if (!isGood)
        return {};
    if (!bookmarks.isEmpty())
        addOutline(update, bookmarks);
    if (!links.isEmpty())
        addLinks(update, links);
    return update.bytes();
}

} // namespace programs
