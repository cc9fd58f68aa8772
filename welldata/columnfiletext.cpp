#include "welldata/columnfiletext.h"

#include "welldata/columnfile.h"

#include <QEvent>
#include <QFontDatabase>
#include <QScrollBar>
#include <QTextBlock>

namespace {

constexpr int longestLine = 100'000; // characters; a file without line ends is one line, and its first part tells
constexpr int sliceBytes = 2'000'000;
constexpr int alignedLines = 200; // of the file's beginning; their fields stand below each other
constexpr int widestColumnPx = 320;

// A colour between the two, for light and dark palettes.
QColor between(const QColor &a, const QColor &b, double share)
{
    const auto mix = [share](int x, int y) { return static_cast<int>(x * share + y * (1 - share)); };
    return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

struct Place
{
    int start;
    int length;
};

// Where the fields of a shown line stand.
QVector<Place> fieldPlaces(const QString &line)
{
    const QByteArray bytes = line.toUtf8();
    const textfields::Field all(bytes.constData(), static_cast<size_t>(bytes.size()));
    QVector<Place> places;
    for (const textfields::Field field : welldata::fieldsOfLine(all)) {
        const int start = QString::fromUtf8(bytes.constData(), static_cast<int>(field.data() - all.data())).size();
        places.append({start, textfields::toString(field).size()});
    }
    return places;
}

} // namespace

ColumnFileText::ColumnFileText(QWidget *parent)
    : QPlainTextEdit(parent)
{
    setObjectName(QStringLiteral("fileText"));
    setReadOnly(true);
    setLineWrapMode(NoWrap);
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &ColumnFileText::showMoreAtEnd);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &ColumnFileText::mark);
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, &ColumnFileText::viewChanged);
}

void ColumnFileText::setBytes(const QByteArray &bytes)
{
    m_text = textfields::utf8Text(bytes);
    m_at = m_shownLines = m_lineCount = 0;
    base::forEachLine(m_text.constData(), m_text.constData() + m_text.size(), [this](const char *, const char *) {
        ++m_lineCount;
        return true;
    });
    clear();
    appendSlice();
    alignColumns();
    moveCursor(QTextCursor::Start);
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
    mark();
}

// One distance of tab stops serves all columns: that of the widest field.
void ColumnFileText::alignColumns()
{
    int widest = m_narrowestPx;
    QTextBlock block = document()->firstBlock();
    for (int line = 0; line < alignedLines && block.isValid(); ++line, block = block.next()) {
        const QStringList fields = block.text().left(longestLine / 100).split(QLatin1Char('\t'));
        for (int field = 0; field + 1 < fields.size(); ++field)
            widest = qMax(widest, fontMetrics().horizontalAdvance(fields.at(field)));
    }
    setTabStopDistance(qMin(widest, widestColumnPx) + fontMetrics().averageCharWidth() * 2);
}

void ColumnFileText::setNarrowestColumn(int px)
{
    if (px == m_narrowestPx)
        return;
    m_narrowestPx = px;
    alignColumns();
    mark();
}

void ColumnFileText::showMoreAtEnd()
{
    if (!m_isAppending && verticalScrollBar()->value() >= verticalScrollBar()->maximum())
        appendSlice();
}

void ColumnFileText::appendSlice()
{
    if (isWhole())
        return;
    m_isAppending = true;
    const char *begin = m_text.constData() + m_at;
    const char *end = m_text.constData() + m_text.size();
    const char *at = begin;
    QString slice;
    for (int lines = 0; at < end && lines < sliceLines && at - begin < sliceBytes; ++lines, ++m_shownLines) {
        const char *stop = base::lineStop(at, end);
        const int length = static_cast<int>(stop - at);
        slice += QString::fromUtf8(at, qMin(length, longestLine));
        at = base::nextLine(stop, end);
        if (at > stop)
            slice += QLatin1Char('\n');
    }
    m_at = static_cast<int>(at - m_text.constData());
    // The document's own cursor: the user's selection and place stay.
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(slice);
    m_isAppending = false;
    emit viewChanged();
}

void ColumnFileText::setHeaderLines(int count)
{
    m_headerLines = count;
    mark();
}

void ColumnFileText::setColumns(const QVector<int> &columns)
{
    m_columns = columns;
    mark();
}

void ColumnFileText::resizeEvent(QResizeEvent *event)
{
    QPlainTextEdit::resizeEvent(event);
    mark();
}

void ColumnFileText::changeEvent(QEvent *event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        mark();
}

// Only what is in view is marked.
void ColumnFileText::mark()
{
    QList<QTextEdit::ExtraSelection> marks;
    const int bottom = viewport()->height();
    QTextBlock block = firstVisibleBlock();
    for (; block.isValid() && blockBoundingGeometry(block).translated(contentOffset()).top() < bottom;
         block = block.next()) {
        QTextEdit::ExtraSelection selection;
        selection.cursor = QTextCursor(block);
        if (block.blockNumber() < m_headerLines) {
            selection.cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
            selection.format.setForeground(
                between(palette().color(QPalette::Text), palette().color(QPalette::Base), 0.45));
            marks.append(selection);
            continue;
        }
        selection.format.setBackground(
            between(palette().color(QPalette::Highlight), palette().color(QPalette::Base), 0.25));
        const QVector<Place> places = fieldPlaces(block.text());
        for (const int column : m_columns) {
            if (column < 1 || column > places.size())
                continue;
            const Place place = places.at(column - 1);
            selection.cursor.setPosition(block.position() + place.start);
            selection.cursor.setPosition(block.position() + place.start + place.length, QTextCursor::KeepAnchor);
            marks.append(selection);
        }
    }
    setExtraSelections(marks);
    emit viewChanged();
}

QVector<ColumnFileText::Column> ColumnFileText::columnsInView() const
{
    QVector<Column> columns;
    QTextBlock block = firstVisibleBlock();
    while (block.isValid() && block.next().isValid() && block.blockNumber() < m_headerLines)
        block = block.next();
    const QVector<Place> places = fieldPlaces(block.text());
    for (int i = 0; i < places.size(); ++i) {
        QTextCursor cursor(block);
        cursor.setPosition(block.position() + places.at(i).start);
        const int left = cursorRect(cursor).left();
        cursor.setPosition(block.position() + places.at(i).start + places.at(i).length);
        columns.append({i + 1, left, cursorRect(cursor).left()});
    }
    return columns;
}
