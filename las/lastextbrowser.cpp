#include "las/lastextbrowser.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <QTextBlock>

namespace {

constexpr int sliceLines = 2000;
constexpr int sliceCharacters = 400'000;
// A file without line ends is one line; its first part tells what it is.
constexpr int longestLine = 100'000;

QString titleText(QString title)
{
    title.remove(0, int(qstrlen("<b>")));
    title.chop(int(qstrlen("</b>")));
    return title;
}

} // namespace

LasTextBrowser::LasTextBrowser(QWidget *parent)
    : QTextBrowser(parent)
{
    setObjectName(QStringLiteral("lasText"));
    // No literal: Qt keeps the names of fonts longer than the plug-in is loaded.
    QFont courier(QString::fromLatin1("Courier"), 14);
    courier.setFixedPitch(true);
    courier.setStyleHint(QFont::TypeWriter);
    setFont(courier);
    setLineWrapMode(QTextEdit::NoWrap);
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextBrowserInteraction | Qt::TextSelectableByKeyboard);
    setOpenLinks(false);
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &LasTextBrowser::showMoreWhereNeeded);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &LasTextBrowser::showMoreWhereNeeded);
}

void LasTextBrowser::setLines(const LasLines &lines)
{
    m_lines = lines;
    m_shown = 0; // clearing moves the scroll bars, and with lines shown more would be appended
    clear();
    appendSlice();
    moveCursor(QTextCursor::Start);
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
}

// "End of the document" is the end of what is shown; without this the keyboard would stop there.
void LasTextBrowser::keyPressEvent(QKeyEvent *event)
{
    QTextBrowser::keyPressEvent(event);
    showMoreWhereNeeded();
}

void LasTextBrowser::showMoreWhereNeeded()
{
    const QScrollBar *bar = verticalScrollBar();
    if (!m_isAppending && m_shown > 0 && bar->value() + 2 * bar->pageStep() > bar->maximum())
        appendSlice();
}

void LasTextBrowser::appendSlice()
{
    if (m_shown >= m_lines.count())
        return;
    m_isAppending = true;
    // The document's own cursor: the user's selection and place stay.
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    QTextCharFormat plain = currentCharFormat();
    plain.setFontWeight(QFont::Normal);
    if (m_shown == 0) {
        QTextCharFormat bold = plain;
        bold.setFontWeight(QFont::Bold);
        cursor.insertText(titleText(m_lines.line(0)), bold);
        ++m_shown;
    }
    QString slice;
    const int stop = qMin(m_lines.count(), m_shown + sliceLines);
    for (; m_shown < stop && slice.size() < sliceCharacters; ++m_shown) {
        const QString line = m_lines.line(m_shown, longestLine + 1);
        slice += QLatin1Char('\n');
        if (line.size() > longestLine)
            slice += line.leftRef(longestLine) + QStringLiteral(" …");
        else
            slice += line;
    }
    cursor.insertText(slice, plain);
    m_isAppending = false;
}
