#include "welldata/columnpreview.h"

#include "welldata/columnfile.h"

#include <QEvent>
#include <QFontDatabase>
#include <QLabel>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QVBoxLayout>

namespace {

constexpr int longestLine = 100'000; // characters; a file without line ends is one line, and its first part tells
constexpr int sliceBytes = 2'000'000;
constexpr int alignedLines = 200; // of the file's beginning; their fields stand below each other
constexpr int widestColumnPx = 320;
constexpr int rulerMarginPx = 4; // left and right of a text of the ruler, and between its boxes

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

/// The line of column numbers above the text, in step with it.
class ColumnRuler : public QWidget
{
public:
    explicit ColumnRuler(ColumnPreview *preview)
        : QWidget(preview)
        , m_preview(preview)
    {
        setObjectName(QStringLiteral("columnRuler"));
        setFixedHeight(fontMetrics().height() + 6);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), palette().window());
        const ColumnFileText *text = m_preview->text();
        const int offset = text->viewport()->mapTo(m_preview, QPoint()).x() - x();
        const QVector<ColumnFileText::Column> columns = text->columnsInView();
        const QStringList texts = m_preview->rulerTexts();
        for (int i = 0; i < columns.size(); ++i) {
            const bool isChosen = m_preview->m_columns.contains(columns.at(i).number);
            const int right = i + 1 < columns.size() ? columns.at(i + 1).left - rulerMarginPx : width();
            const int textWidth = fontMetrics().horizontalAdvance(texts.at(i)) + 2 * rulerMarginPx;
            const int left = columns.at(i).left + offset;
            const QRect box(left, 2, qMin(textWidth, right + offset - left), height() - 4);
            if (isChosen)
                painter.fillRect(box, palette().highlight());
            painter.setPen(palette().color(isChosen ? QPalette::HighlightedText : QPalette::WindowText));
            painter.drawText(box.adjusted(rulerMarginPx, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, texts.at(i));
        }
    }

private:
    ColumnPreview *m_preview;
};

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

ColumnPreview::ColumnPreview(QWidget *parent)
    : QWidget(parent)
    , m_ruler(new ColumnRuler(this))
    , m_text(new ColumnFileText)
    , m_note(new QLabel)
{
    m_note->setObjectName(QStringLiteral("previewNote"));
    m_note->setTextFormat(Qt::PlainText);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_ruler);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_note);
    m_note->hide();
    connect(m_text, &ColumnFileText::viewChanged, this, [this] {
        m_ruler->update();
        tellHowMuch();
    });
}

void ColumnPreview::setBytes(const QByteArray &bytes)
{
    m_text->setBytes(bytes);
    tellHowMuch();
}

void ColumnPreview::setChoice(int headerLines, const QVector<int> &columns, const QStringList &labels)
{
    m_columns = columns;
    m_labels = labels;
    m_text->setNarrowestColumn(widestRulerTextPx());
    m_text->setHeaderLines(headerLines);
    m_text->setColumns(columns);
    m_ruler->update();
}

int ColumnPreview::widestRulerTextPx() const
{
    int widest = 0;
    for (int i = 0; i < m_columns.size(); ++i)
        widest = qMax(widest, m_ruler->fontMetrics().horizontalAdvance(rulerText(m_columns.at(i))));
    return widest + 3 * rulerMarginPx;
}

QString ColumnPreview::rulerText(int column) const
{
    QStringList words{QString::number(column)};
    for (int i = 0; i < m_columns.size(); ++i)
        if (m_columns.at(i) == column)
            words.append(m_labels.value(i));
    return words.join(QLatin1Char(' '));
}

QStringList ColumnPreview::rulerTexts() const
{
    QStringList texts;
    for (const ColumnFileText::Column &column : m_text->columnsInView())
        texts.append(rulerText(column.number));
    return texts;
}

void ColumnPreview::tellHowMuch()
{
    m_note->setVisible(!m_text->isWhole());
    m_note->setText(QStringLiteral("The first %1 of %2 lines are shown; more come when you scroll to the end. The "
                                   "import reads them all.")
                        .arg(m_text->shownLines())
                        .arg(m_text->lineCount()));
}
