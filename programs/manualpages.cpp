#include "programs/manualpages.h"

#include "base/atomicfile.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QCoreApplication>
#include <QFileInfo>
#include <QFontDatabase>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextTable>
#include <QtMath>

#include <limits>
#include <numeric>
#include <vector>

namespace programs {

namespace {

constexpr int dotsPerInch = 1200;
constexpr double pointsPerInch = 72;
constexpr int imageDots = 96; // per inch, in which Qt takes the sizes of pictures in a text
constexpr double pictureScale = 0.6; // of what a screen shows, so that its letters are as large as the text's
constexpr double tallestPicture = 0.55; // of a page
constexpr double tallestUnbrokenTable = 0.6; // of a page
constexpr int pixelsPerInch = 96; // in which a text counts the paddings of its tables
constexpr int bodySize = 10; // points
constexpr double codeSize = 9;
constexpr double smallestCodeSize = 6.5;
constexpr double codeLetterWidth = 0.605; // of the size, and a little more than it is
constexpr int footerSize = 8;
constexpr int contentsLevels = 2;
constexpr QMarginsF marginsMm(22, 20, 22, 24);

QFont textFont(int points)
{
    return QFont(QString::fromLatin1("Liberation Sans"), points);
}

int headingSize(int level)
{
    const int sizes[] = {bodySize, 20, 14, 11};
    return sizes[qBound(0, level, 3)];
}

// Wide where there is much to say; no column is squeezed.
QVector<QTextLength> columnWidths(const QTextTable &table)
{
    constexpr int fewestLetters = 10;
    constexpr int mostLetters = 60;
    QVector<double> letters(table.columns(), fewestLetters);
    for (int row = 0; row < table.rows(); ++row)
        for (int column = 0; column < table.columns(); ++column) {
            const QTextTableCell cell = table.cellAt(row, column);
            const int length = cell.lastPosition() - cell.firstPosition();
            letters[column] = qMax(letters.at(column), double(qMin(length, mostLetters)));
        }
    const double all = std::accumulate(letters.begin(), letters.end(), 0.0);
    QVector<QTextLength> widths;
    for (double count : qAsConst(letters))
        widths.append(QTextLength(QTextLength::PercentageLength, 100 * count / all));
    return widths;
}

// What belongs to what follows.
bool announces(const QTextBlock &block)
{
    return block.blockFormat().headingLevel() > 0 || block.text().endsWith(QLatin1Char(':'));
}

bool isAllIn(const QString &fontFamily, const QTextBlock &block)
{
    bool isAll = !block.text().isEmpty() && !QTextCursor(block).currentTable();
    for (auto part = block.begin(); !part.atEnd(); ++part)
        isAll = isAll && part.fragment().charFormat().fontFamily() == fontFamily;
    return isAll;
}

} // namespace

ManualDocument::ManualDocument(const ManualChapter &chapter, const QString &pictureFolder, QPagedPaintDevice *device,
                               const QSizeF &pageSize)
    : m_pictureFolder(pictureFolder)
    , m_pageInches(pageSize / dotsPerInch)
{
    setDefaultFont(textFont(bodySize));
    setMarkdown(chapter.text,
                QTextDocument::MarkdownFeatures(QTextDocument::MarkdownDialectGitHub)
                    | QTextDocument::MarkdownNoHTML);
    styleText();
    styleCode();
    fitPictures();
    styleTables();
    layOut(device, pageSize);
    keepTables();
    keepLines();
    while (keepHeadings()) { // a heading follows what it announces, if that announces a table
    }
}

void ManualDocument::layOut(QPagedPaintDevice *device, const QSizeF &pageSize)
{
    documentLayout()->setPaintDevice(device);
    setDocumentMargin(0);
    setPageSize(pageSize);
}

QVariant ManualDocument::loadResource(int type, const QUrl &name)
{
    if (type != QTextDocument::ImageResource)
        return QTextDocument::loadResource(type, name);
    return QImage(m_pictureFolder + QLatin1Char('/') + QFileInfo(name.path()).fileName());
}

void ManualDocument::styleText()
{
    for (QTextBlock block = begin(); block.isValid(); block = block.next()) {
        QTextCursor cursor(block);
        const int level = block.blockFormat().headingLevel();
        QTextBlockFormat format;
        if (level > 0) {
            format.setTopMargin(level == 1 ? 0 : 14);
            format.setBottomMargin(level == 1 ? 12 : 5);
            cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
            QTextCharFormat letters; // instead of the ones that make a heading larger by steps
            letters.setFontPointSize(headingSize(level));
            letters.setFontWeight(QFont::Bold);
            cursor.setCharFormat(letters);
        } else if (!block.textList()) {
            format.setTopMargin(3);
            format.setBottomMargin(5);
        }
        cursor.mergeBlockFormat(format);
    }
}

// The font that Qt takes for commands and file names need not have letters of one width.
void ManualDocument::styleCode()
{
    const QString wasFamily = QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
    int longest = 1; // line of a block of commands: none is to be broken
    for (QTextBlock block = begin(); block.isValid(); block = block.next())
        if (isAllIn(wasFamily, block))
            longest = qMax(longest, block.length() - 1);
    const double blockSize =
        qBound(smallestCodeSize, m_pageInches.width() * pointsPerInch / (codeLetterWidth * longest), codeSize);
    QTextCharFormat code;
    code.setFontFamily(QString::fromLatin1("Liberation Mono"));
    code.setFontFixedPitch(true);
    for (QTextBlock block = begin(); block.isValid(); block = block.next()) {
        code.setFontPointSize(isAllIn(wasFamily, block) ? blockSize : codeSize);
        QVector<QPair<int, int>> parts;
        for (auto part = block.begin(); !part.atEnd(); ++part)
            if (part.fragment().charFormat().fontFamily() == wasFamily)
                parts.append({part.fragment().position(), part.fragment().length()});
        for (const QPair<int, int> &part : qAsConst(parts)) {
            QTextCursor cursor(this);
            cursor.setPosition(part.first);
            cursor.setPosition(part.first + part.second, QTextCursor::KeepAnchor);
            cursor.mergeCharFormat(code);
        }
    }
}

void ManualDocument::fitPictures()
{
    for (QTextBlock block = begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextFragment fragment = part.fragment();
            QTextImageFormat format = fragment.charFormat().toImageFormat();
            if (!format.isValid())
                continue;
            const QImage image = resource(ImageResource, QUrl(format.name())).value<QImage>();
            const QSizeF most(m_pageInches.width() * imageDots, m_pageInches.height() * imageDots * tallestPicture);
            QSizeF size = QSizeF(image.size()) * pictureScale;
            if (size.width() > most.width() || size.height() > most.height())
                size.scale(most, Qt::KeepAspectRatio);
            format.setWidth(qFloor(size.width()));
            format.setHeight(qFloor(size.height()));
            QTextCursor cursor(this);
            cursor.setPosition(fragment.position());
            cursor.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
            cursor.setCharFormat(format);
            break; // the fragments of the block are others now
        }
    }
}

void ManualDocument::styleTables()
{
    for (QTextFrame *frame : rootFrame()->childFrames()) {
        auto *table = qobject_cast<QTextTable *>(frame);
        if (!table)
            continue;
        QTextTableFormat format = table->format();
        format.setHeaderRowCount(1); // again on each page
        format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
        format.setColumnWidthConstraints(columnWidths(*table));
        format.setCellPadding(3);
        format.setCellSpacing(0);
        format.setBorder(0.5);
        format.setBorderBrush(QColor(160, 160, 160));
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setBorderCollapse(true);
        format.setTopMargin(4);
        format.setBottomMargin(10);
        table->setFormat(format);
        for (int column = 0; column < table->columns(); ++column) {
            QTextTableCell heading = table->cellAt(0, column);
            QTextCharFormat cell = heading.format();
            cell.setBackground(QColor(230, 236, 242));
            heading.setFormat(cell);
        }
    }
}

// Of the first line: where a page ends, a block can begin before it.
int ManualDocument::pageOf(const QTextBlock &block) const
{
    const QTextLayout *lines = block.layout();
    double top = documentLayout()->blockBoundingRect(block).top();
    if (lines->lineCount() > 0)
        top += lines->lineAt(0).y() - lines->boundingRect().top();
    return static_cast<int>(top / pageSize().height());
}

int ManualDocument::lastPageOf(const QTextBlock &block) const
{
    return static_cast<int>((documentLayout()->blockBoundingRect(block).bottom() - 1) / pageSize().height());
}

QVector<int> ManualDocument::pagesOfLines(const QTextBlock &block) const
{
    QVector<int> pages;
    const QTextLayout *lines = block.layout();
    const double top = documentLayout()->blockBoundingRect(block).top() - lines->boundingRect().top();
    for (int line = 0; line < lines->lineCount(); ++line)
        pages.append(static_cast<int>((top + lines->lineAt(line).y()) / pageSize().height()));
    return pages;
}

void ManualDocument::setBreakBefore(const QTextBlock &block, QTextFormat::PageBreakFlags policy)
{
    QTextBlockFormat format;
    format.setPageBreakPolicy(policy);
    QTextCursor(block).mergeBlockFormat(format);
}

// A table that a page can hold stands on one page; of a larger one each row does.
void ManualDocument::keepTables()
{
    for (QTextFrame *frame : rootFrame()->childFrames())
        if (auto *table = qobject_cast<QTextTable *>(frame))
            keepTable(table);
}

void ManualDocument::keepTable(QTextTable *table)
{
    const auto isWhole = [this, table](double *height) {
        const QRectF place = documentLayout()->frameBoundingRect(table);
        *height = place.height() / pageSize().height();
        return static_cast<int>(place.top() / pageSize().height())
            == static_cast<int>(place.bottom() / pageSize().height());
    };
    double height = 0;
    if (isWhole(&height))
        return;
    const QTextBlock before = table->firstCursorPosition().block().previous();
    const bool isAnnounced = announces(before);
    const auto setBreak = [this, table, before, isAnnounced](QTextFormat::PageBreakFlags policy) {
        if (isAnnounced) {
            setBreakBefore(before, policy);
            return;
        }
        QTextTableFormat format = table->format();
        format.setPageBreakPolicy(policy);
        table->setFormat(format);
    };
    setBreak(QTextFormat::PageBreak_AlwaysBefore);
    if (isWhole(&height) && height < tallestUnbrokenTable)
        return;
    setBreak(QTextFormat::PageBreak_Auto);
    for (int row = 0; row < table->rows(); ++row)
        keepRow(*table, row);
}

// What begins on the one page and ends on the next begins there, behind an empty line.
void ManualDocument::keepRow(const QTextTable &table, int row)
{
    int first = std::numeric_limits<int>::max();
    int last = 0;
    double top = 0;
    for (int column = 0; column < table.columns(); ++column) {
        const QTextBlock block = table.cellAt(row, column).firstCursorPosition().block();
        for (const int page : pagesOfLines(block)) {
            first = qMin(first, page);
            last = qMax(last, page);
        }
        top = qMax(top, documentLayout()->blockBoundingRect(block).top());
    }
    if (first >= last)
        return;
    const double gap = last * pageSize().height() - top;
    for (int column = 0; column < table.columns(); ++column) {
        QTextTableCell cell = table.cellAt(row, column);
        QTextTableCellFormat format = cell.format().toTableCellFormat();
        format.setTopPadding(gap * pixelsPerInch / dotsPerInch);
        cell.setFormat(format);
    }
}

// The last line of a paragraph takes the others along to its page.
void ManualDocument::keepLines()
{
    for (QTextBlock block = begin(); block.isValid(); block = block.next()) {
        const QVector<int> pages = pagesOfLines(block);
        const bool isInTable = QTextCursor(block).currentTable() != nullptr;
        if (!isInTable && pages.size() > 1 && pages.last() != pages.at(pages.size() - 2)
            && pages.first() + 1 == pages.last())
            setBreakBefore(block);
    }
}

// A heading, or what ends in a colon, whose text begins on the next page goes there too. Each that moves may move those behind it.
bool ManualDocument::keepHeadings()
{
    bool hasMoved = false;
    for (QTextBlock block = begin(); block.isValid(); block = block.next()) {
        const QTextBlock next = block.next();
        if (!announces(block) || !next.isValid()
            || block.blockFormat().pageBreakPolicy() == QTextFormat::PageBreak_AlwaysBefore)
            continue;
        const bool isPicture = next.text() == QString(QChar::ObjectReplacementCharacter);
        if (pageOf(block) == (isPicture ? lastPageOf(next) : pageOf(next)))
            continue;
        setBreakBefore(next, QTextFormat::PageBreak_Auto); // it comes along
        setBreakBefore(block);
        hasMoved = true;
    }
    return hasMoved;
}

QVector<ManualHeading> ManualDocument::headings()
{
    QVector<ManualHeading> found;
    for (QTextBlock block = begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        if (level > 0 && level <= contentsLevels)
            found.append({block.text(), level, pageOf(block) + 1});
    }
    return found;
}

namespace {

/// The pages one after the other, with their numbers.
class Printer
{
public:
    explicit Printer(QIODevice *device)
        : m_writer(device)
    {
        m_writer.setResolution(dotsPerInch);
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
        m_painter.setFont(textFont(footerSize));
        m_painter.setPen(QPen(QColor(120, 120, 120), dotsPerInch / 150.0));
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
            const QRectF part(0, page * height, document.pageSize().width(), height);
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
    static double footerHeight() { return dotsPerInch * 0.4; }

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
    painter.setFont(textFont(34));
    painter.drawText(QRectF(0, page.height() * 0.25, page.width(), page.height() * 0.08), Qt::AlignLeft,
                     QStringLiteral("LORVA OS"));
    painter.setFont(textFont(16));
    painter.drawText(QRectF(0, page.height() * 0.33, page.width(), page.height() * 0.2), Qt::AlignLeft,
                     QStringLiteral("Manual\n\nWell logs, templates, correlations and well data,\nin OpendTect "
                                    "and in the workbench\n\nVersion %1")
                         .arg(version));
}

struct ContentsLine
{
    QString text;
    int level;
    int page;
};

// Lines that fit a page.
int contentsPerPage()
{
    return 46;
}

void printContents(Printer &printer, const QVector<ContentsLine> &lines)
{
    QPainter &painter = printer.painter();
    const QSizeF page = printer.textSize();
    const double titleHeight = page.height() * 0.06;
    const double lineHeight = (page.height() - titleHeight) / contentsPerPage();
    for (int i = 0; i < lines.size(); ++i) {
        const int row = i % contentsPerPage();
        if (row == 0) {
            printer.beginPage();
            printer.printFooter(QStringLiteral("Contents"));
            painter.setPen(Qt::black);
            QFont font = textFont(headingSize(1));
            font.setBold(true);
            painter.setFont(font);
            painter.drawText(QRectF(0, 0, page.width(), titleHeight), Qt::AlignLeft, QStringLiteral("Contents"));
        }
        const ContentsLine &line = lines.at(i);
        QFont font = textFont(bodySize);
        font.setBold(line.level == 1);
        painter.setFont(font);
        const double indent = (line.level - 1) * dotsPerInch * 0.25;
        const QRectF place(indent, titleHeight + row * lineHeight, page.width() - indent, lineHeight);
        painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter, line.text);
        painter.drawText(place, Qt::AlignRight | Qt::AlignVCenter, QString::number(line.page));
    }
}

} // namespace

QString writeManual(const QVector<ManualChapter> &chapters, const QString &pictureFolder, const QString &file)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly); // in memory
    Printer printer(&buffer);
    std::vector<std::unique_ptr<ManualDocument>> documents;
    QVector<ContentsLine> contents;
    int pages = 0;
    for (const ManualChapter &chapter : chapters) {
        documents.push_back(
            std::make_unique<ManualDocument>(chapter, pictureFolder, printer.device(), printer.textSize()));
        for (const ManualHeading &heading : documents.back()->headings())
            contents.append({heading.text, heading.level, pages + heading.page});
        pages += documents.back()->pageCount();
    }
    const int front = 1 + (contents.size() + contentsPerPage() - 1) / contentsPerPage();
    for (ContentsLine &line : contents)
        line.page += front;
    if (!printer.begin())
        return QStringLiteral("the pages cannot be painted");
    printTitle(printer, QCoreApplication::applicationVersion());
    printContents(printer, contents);
    for (size_t i = 0; i < documents.size(); ++i)
        printer.print(*documents.at(i), chapters.at(static_cast<int>(i)).title);
    if (!printer.end())
        return QStringLiteral("the pages cannot be painted");
    return base::writeFileAtomically(file, bytes).error;
}

} // namespace programs
