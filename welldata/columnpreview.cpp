#include "welldata/columnpreview.h"

#include "welldata/columnfiletext.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace {

constexpr int rulerMarginPx = 4; // left and right of a text of the ruler, and between its boxes

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
            const bool isChosen = m_preview->isChosen(columns.at(i).number);
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

} // namespace

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
