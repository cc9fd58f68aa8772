#include "programs/manualpages.h"

#include "base/atomicfile.h"
#include "programs/manualdocument.h"
#include "programs/pdfbookmarks.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QCoreApplication>
#include <QPainter>
#include <QPdfWriter>

#include <memory>
#include <vector>

namespace programs {

namespace {

constexpr int footerSize = 8;
constexpr int contentsPerPage = 46; // lines
constexpr QMarginsF marginsMm(22, 20, 22, 24);

/// The pages one after the other, with their numbers.
class Printer
{
public:
    explicit Printer(QIODevice *device)
        : m_writer(device)
    {
        m_writer.setResolution(manualDotsPerInch);
        m_writer.setPageSize(QPageSize(QPageSize::A4));
        m_writer.setPageMargins(marginsMm, QPageLayout::Millimeter);
        m_writer.setTitle(QString::fromLatin1("LORVA OS manual"));
        m_writer.setCreator(QString::fromLatin1("lorva-manual"));
    }

    QPagedPaintDevice *device() { return &m_writer; }
    /// What chapters have of a page, in dots.
    QSizeF textSize() const { return {double(m_writer.width()), m_writer.height() - footerHeight()}; }

    bool begin() { return m_painter.begin(&m_writer); }
    bool end() { return m_painter.end(); }
    QPainter &painter() { return m_painter; }
    int page() const { return m_page; } ///< the number of the last one

    void beginPage()
    {
        if (m_page > 0)
            m_writer.newPage();
        ++m_page;
        m_painter.setRenderHint(QPainter::LosslessImageRendering); // letters in pictures stay sharp
    }
    void printFooter(const QString &title)
    {
        const double top = m_writer.height() - footerHeight() / 2;
        m_painter.setFont(manualFont(footerSize));
        m_painter.setPen(QPen(QColor(120, 120, 120), manualDotsPerInch / 150.0));
        m_painter.drawLine(QPointF(0, top), QPointF(m_writer.width(), top));
        const QRectF line(0, top, m_writer.width(), footerHeight() / 2);
        m_painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, title);
        m_painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter, QString::number(m_page));
    }
    void print(const ManualDocument &document, const QString &title)
    {
        const double height = document.pageSize().height();
        for (int page = 0; page < document.pageCount(); ++page) {
            beginPage();
            m_painter.save();
            // What begins at the top of the next page is no part of this one, to the last dot.
            const QRectF part(0, page * height, document.pageSize().width(), height - 1);
            m_painter.translate(0, -part.top());
            m_painter.setClipRect(part);
            QAbstractTextDocumentLayout::PaintContext context;
            context.clip = part;
            context.palette.setColor(QPalette::Text, Qt::black);
            document.documentLayout()->draw(&m_painter, context);
            m_painter.restore();
            printFooter(title);
        }
    }

private:
    static double footerHeight() { return manualDotsPerInch * 0.4; }

    QPdfWriter m_writer;
    QPainter m_painter;
    int m_page = 0;
};

void printTitle(Printer &printer, const QString &version)
{
    printer.beginPage();
    QPainter &painter = printer.painter();
    const QSizeF page = printer.textSize();
    painter.setPen(Qt::black);
    painter.setFont(manualFont(34));
    painter.drawText(QRectF(0, page.height() * 0.25, page.width(), page.height() * 0.08), Qt::AlignLeft,
                     QStringLiteral("LORVA OS"));
    painter.setFont(manualFont(16));
    painter.drawText(QRectF(0, page.height() * 0.33, page.width(), page.height() * 0.2), Qt::AlignLeft,
                     QStringLiteral("Manual\n\nWell logs, templates, correlations and well data,\nin OpendTect "
                                    "and in the workbench\n\nVersion %1")
                         .arg(version));
}

double inPoints(double dots)
{
    return dots * pointsPerInch / manualDotsPerInch;
}

QPointF textCorner()
{
    constexpr double pointsPerMm = pointsPerInch / 25.4;
    return {marginsMm.left() * pointsPerMm, marginsMm.top() * pointsPerMm};
}

PdfPlace placeOf(const ManualHeading &heading)
{
    return {heading.page - 1, textCorner().y() + inPoints(heading.top)};
}

// On a page, from the place in its text.
QRectF areaOf(const QRectF &dots)
{
    return {textCorner() + QPointF(inPoints(dots.x()), inPoints(dots.y())),
            QSizeF(inPoints(dots.width()), inPoints(dots.height()))};
}

// Gives what its lines are linked to.
QVector<PdfLink> printContents(Printer &printer, const QVector<ManualHeading> &headings)
{
    QPainter &painter = printer.painter();
    const QSizeF page = printer.textSize();
    const double titleHeight = page.height() * 0.06;
    const double lineHeight = (page.height() - titleHeight) / contentsPerPage;
    QVector<PdfLink> links;
    for (int i = 0; i < headings.size(); ++i) {
        const int row = i % contentsPerPage;
        if (row == 0) {
            printer.beginPage();
            printer.printFooter(QStringLiteral("Contents"));
            painter.setPen(Qt::black);
            QFont font = manualFont(manualHeadingSize(1));
            font.setBold(true);
            painter.setFont(font);
            painter.drawText(QRectF(0, 0, page.width(), titleHeight), Qt::AlignLeft, QStringLiteral("Contents"));
        }
        const ManualHeading &heading = headings.at(i);
        QFont font = manualFont(manualTextSize);
        font.setBold(heading.level == 1);
        painter.setFont(font);
        const double indent = (heading.level - 1) * manualDotsPerInch * 0.25;
        const QRectF place(indent, titleHeight + row * lineHeight, page.width() - indent, lineHeight);
        painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter, heading.text);
        painter.drawText(place, Qt::AlignRight | Qt::AlignVCenter, QString::number(heading.page));
        links.append({printer.page() - 1, areaOf(place), placeOf(heading)});
    }
    return links;
}

QVector<PdfBookmark> bookmarksOf(const QVector<ManualHeading> &headings)
{
    QVector<PdfBookmark> bookmarks;
    for (const ManualHeading &heading : headings)
        bookmarks.append({heading.text.simplified(), heading.level, placeOf(heading)});
    return bookmarks;
}

} // namespace

QString writeManual(const QVector<ManualChapter> &chapters, const QString &pictureFolder, const QString &file)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly); // in memory
    Printer printer(&buffer);
    std::vector<std::unique_ptr<ManualDocument>> documents;
    QVector<ManualHeading> contents; // with their pages in the manual
    QVector<int> titles; // of the chapters, among the contents
    int pages = 0;
    for (const ManualChapter &chapter : chapters) {
        documents.push_back(
            std::make_unique<ManualDocument>(chapter, pictureFolder, printer.device(), printer.textSize()));
        titles.append(contents.size());
        for (ManualHeading &heading : documents.back()->headings()) {
            heading.page += pages;
            contents.append(heading);
        }
        pages += documents.back()->pageCount();
    }
    const int front = 1 + (contents.size() + contentsPerPage - 1) / contentsPerPage;
    for (ManualHeading &heading : contents)
        heading.page += front;
    if (!printer.begin())
        return QStringLiteral("the pages cannot be painted");
    printTitle(printer, QCoreApplication::applicationVersion());
    QVector<PdfLink> links = printContents(printer, contents);
    for (size_t i = 0; i < documents.size(); ++i) {
        for (const ManualReference &reference : documents.at(i)->references())
            if (reference.chapter >= 1 && reference.chapter <= titles.size())
                links.append({printer.page() + reference.page - 1, areaOf(reference.area),
                              placeOf(contents.at(titles.at(reference.chapter - 1)))});
        printer.print(*documents.at(i), chapters.at(static_cast<int>(i)).title);
    }
    if (!printer.end())
        return QStringLiteral("the pages cannot be painted");
    const QByteArray linked = withBookmarks(bytes, bookmarksOf(contents), links);
    if (linked.isEmpty())
        return QStringLiteral("its pages have a form that is not known");
    return base::writeFileAtomically(file, linked).error;
}

} // namespace programs
