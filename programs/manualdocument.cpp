#include "programs/manualdocument.h"

#include <QAbstractTextDocumentLayout>
#include <QFileInfo>
#include <QFontDatabase>
#include <QHash>
#include <QImage>
#include <QPagedPaintDevice>
#include <QRegularExpression>
#include <QTextCursor>
#include <QTextTable>
#include <QtMath>

#include <algorithm>
#include <limits>
#include <numeric>
#include <optional>

namespace programs {

namespace {

constexpr int imageDots = 96; // per inch, in which Qt takes the sizes of pictures in a text
constexpr double pictureScale = 0.6; // of what a screen shows, so that its letters are as large as the text's
constexpr double tallestPicture = 0.55; // of a page
constexpr double tallestUnbrokenTable = 0.6; // of a page
constexpr int pixelsPerInch = 96; // in which a text counts the paddings of its tables
constexpr double commandIndent = 0.1; // inches
constexpr double codeSize = 9;
constexpr double smallestCodeSize = 6.5;
constexpr double codeLetterWidth = 0.605; // of the size, and a little more than it is
constexpr int contentsLevels = 2;

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

QFont manualFont(int points)
{
    return QFont(QString::fromLatin1("Liberation Sans"), points);
}

int manualHeadingSize(int level)
{
    const int sizes[] = {manualTextSize, 20, 14, 11};
    return sizes[qBound(0, level, 3)];
}

ManualDocument::ManualDocument(const ManualChapter &chapter, const QString &pictureFolder, QPagedPaintDevice *device,
                               const QSizeF &pageSize)
    : m_pictureFolder(pictureFolder)
    , m_pageInches(pageSize / manualDotsPerInch)
{
    setDefaultFont(manualFont(manualTextSize));
    setMarkdown(chapter.text,
                QTextDocument::MarkdownFeatures(QTextDocument::MarkdownDialectGitHub)
                    | QTextDocument::MarkdownNoHTML);
    styleText();
    styleCode();
    fitPictures();
    styleTables();
    layOut(device, pageSize);
    keepTogether();
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
            letters.setFontPointSize(manualHeadingSize(level));
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
    const auto isCommand = [&wasFamily](const QTextBlock &block) { return isAllIn(wasFamily, block); };
    QHash<int, double> sizes; // of commands, by block
    for (QTextBlock block = begin(); block.isValid(); block = block.next()) {
        if (!isCommand(block))
            continue;
        QVector<QTextBlock> commands;
        int longest = 1; // none is to be broken
        for (; isCommand(block); block = block.next()) {
            commands.append(block);
            longest = qMax(longest, block.length() - 1);
        }
        const double size = commandSize(longest);
        for (const QTextBlock &command : qAsConst(commands))
            sizes.insert(command.position(), size);
        spaceCommands(commands);
        m_commands.append(commands);
        block = commands.last();
    }
    QTextCharFormat code;
    code.setFontFamily(QString::fromLatin1("Liberation Mono"));
    code.setFontFixedPitch(true);
    for (QTextBlock block = begin(); block.isValid(); block = block.next()) {
        code.setFontPointSize(sizes.value(block.position(), codeSize));
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

// At which a line of so many letters has room.
double ManualDocument::commandSize(int letters) const
{
    const double room = (m_pageInches.width() - commandIndent) * pointsPerInch;
    return qBound(smallestCodeSize, room / (codeLetterWidth * letters), codeSize);
}

// Indented, and one below the other; what follows is a paragraph, where Qt leaves an empty one.
void ManualDocument::spaceCommands(const QVector<QTextBlock> &commands)
{
    for (const QTextBlock &command : commands) {
        QTextBlockFormat format;
        format.setLeftMargin(commandIndent * manualDotsPerInch);
        format.setTopMargin(command == commands.first() ? 3 : 0);
        format.setBottomMargin(command == commands.last() ? 7 : 1);
        QTextCursor(command).mergeBlockFormat(format);
    }
    const QTextBlock behind = commands.last().next();
    if (!behind.isValid() || !behind.text().isEmpty() || QTextCursor(behind).currentTable())
        return;
    QTextCursor cursor(behind);
    if (behind.next().isValid())
        cursor.deleteChar();
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
double ManualDocument::topOf(const QTextBlock &block) const
{
    const QTextLayout *lines = block.layout();
    double top = documentLayout()->blockBoundingRect(block).top();
    if (lines->lineCount() > 0)
        top += lines->lineAt(0).y();
    return top;
}

int ManualDocument::pageOf(const QTextBlock &block) const
{
    return static_cast<int>(topOf(block) / pageSize().height());
}

int ManualDocument::lastPageOf(const QTextBlock &block) const
{
    return static_cast<int>((documentLayout()->blockBoundingRect(block).bottom() - 1) / pageSize().height());
}

QVector<int> ManualDocument::pagesOfLines(const QTextBlock &block) const
{
    QVector<int> pages;
    const QTextLayout *lines = block.layout();
    const double top = documentLayout()->blockBoundingRect(block).top();
    for (int line = 0; line < lines->lineCount(); ++line)
        pages.append(static_cast<int>((top + lines->lineAt(line).y()) / pageSize().height()));
    return pages;
}

// From the top down: what moves to the next page moves all behind it, and nothing before.
void ManualDocument::keepTogether()
{
    for (QTextBlock block = begin(); block.isValid(); block = block.next()) {
        if (QTextTable *table = QTextCursor(block).currentTable()) {
            keepTable(table);
            block = table->lastCursorPosition().block();
        } else if (isTorn(block) || isApart(block)) {
            setBreakBefore(announcedFrom(block), true);
        }
    }
    markContentsDirty(0, characterCount()); // laid out change by change, pages can be missing
}

// Whether one line of a paragraph stands alone, or commands are on two pages.
bool ManualDocument::isTorn(const QTextBlock &block) const
{
    const auto commands = std::find_if(m_commands.begin(), m_commands.end(),
                                       [&block](const QVector<QTextBlock> &some) { return some.first() == block; });
    if (commands != m_commands.end() && pageOf(commands->first()) + 1 == pageOf(commands->last()))
        return true;
    const QVector<int> pages = pagesOfLines(block);
    if (pages.size() < 2 || pages.first() + 1 != pages.last())
        return false;
    return pages.last() != pages.at(pages.size() - 2) || pages.first() != pages.at(1);
}

// Whether what announces the block stands on another page.
bool ManualDocument::isApart(const QTextBlock &block) const
{
    const QTextBlock before = block.previous();
    if (!before.isValid() || !announces(before))
        return false;
    const bool isPicture = block.text() == QString(QChar::ObjectReplacementCharacter);
    return pageOf(before) != (isPicture ? lastPageOf(block) : pageOf(block));
}

// The block, or the first of those that announce it one after the other.
QTextBlock ManualDocument::announcedFrom(const QTextBlock &block)
{
    QTextBlock first = block;
    while (first.previous().isValid() && announces(first.previous()))
        first = first.previous();
    return first;
}

void ManualDocument::setBreakBefore(const QTextBlock &block, bool isThere)
{
    if (!block.previous().isValid())
        return; // the chapter begins there
    const auto policy = isThere ? QTextFormat::PageBreak_AlwaysBefore : QTextFormat::PageBreak_Auto;
    QTextTable *table = QTextCursor(block).currentTable();
    if (table) {
        QTextTableFormat format = table->format();
        format.setPageBreakPolicy(policy);
        table->setFormat(format);
    } else {
        QTextBlockFormat format;
        format.setPageBreakPolicy(policy);
        QTextCursor(block).mergeBlockFormat(format);
    }
    markContentsDirty(0, characterCount());
}

// A table that a page can hold stands on one page, with what announces it; of a larger one each row does.
void ManualDocument::keepTable(QTextTable *table)
{
    const QTextBlock start = table->firstCursorPosition().block();
    const QTextBlock first = announcedFrom(start);
    const auto place = [this, table] { return documentLayout()->frameBoundingRect(table); };
    const auto isTogether = [&] {
        const int page = static_cast<int>(place().top() / pageSize().height());
        return page == static_cast<int>(place().bottom() / pageSize().height())
            && (first == start || pageOf(first) == page);
    };
    if (isTogether())
        return;
    const bool wasThere = first.blockFormat().pageBreakPolicy() == QTextFormat::PageBreak_AlwaysBefore;
    setBreakBefore(first, true);
    if (isTogether() && place().height() < tallestUnbrokenTable * pageSize().height())
        return;
    setBreakBefore(first, wasThere);
    keepRows(*table);
    if (first == start || pageOf(start.previous()) == pageOf(start))
        return;
    setBreakBefore(first, true);
    keepRows(*table);
}

void ManualDocument::keepRows(const QTextTable &table)
{
    for (int row = 0; row < table.rows(); ++row)
        padRow(table, row, {});
    for (int row = 0; row < table.rows(); ++row)
        keepRow(table, row);
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
    padRow(table, row, (last * pageSize().height() - top) * pixelsPerInch / manualDotsPerInch);
}

// Leaves so many pixels above the row's texts, or what all cells leave.
void ManualDocument::padRow(const QTextTable &table, int row, std::optional<double> padding)
{
    for (int column = 0; column < table.columns(); ++column) {
        QTextTableCell cell = table.cellAt(row, column);
        QTextTableCellFormat format = cell.format().toTableCellFormat();
        if (padding)
            format.setTopPadding(*padding);
        else
            format.clearProperty(QTextFormat::TableCellTopPadding);
        cell.setFormat(format);
    }
}

QVector<ManualHeading> ManualDocument::headings()
{
    QVector<ManualHeading> found;
    for (QTextBlock block = begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        if (level > 0 && level <= contentsLevels)
            found.append(
                {block.text(), level, pageOf(block) + 1, topOf(block) - pageOf(block) * pageSize().height()});
    }
    return found;
}

// A name that goes on in the next line leads there from its first one.
QVector<ManualReference> ManualDocument::references()
{
    static const QRegularExpression named(QStringLiteral("\\(chapter (\\d+)\\)"));
    QVector<ManualReference> found;
    for (QTextBlock block = begin(); block.isValid(); block = block.next()) {
        const QPointF place = documentLayout()->blockBoundingRect(block).topLeft();
        auto each = named.globalMatch(block.text());
        while (each.hasNext()) {
            const QRegularExpressionMatch match = each.next();
            const QTextLine line = block.layout()->lineForTextPosition(match.capturedStart());
            const double left = line.cursorToX(match.capturedStart());
            const double right = line.cursorToX(match.capturedEnd());
            const double top = place.y() + line.y();
            const int page = static_cast<int>(top / pageSize().height());
            found.append({match.captured(1).toInt(), page + 1,
                          QRectF(place.x() + left, top - page * pageSize().height(), right - left, line.height())});
        }
    }
    return found;
}

} // namespace programs
