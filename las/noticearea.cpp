#include "las/noticearea.h"

#include <QLabel>

namespace {

constexpr int mostLines = 6;
constexpr int margin = 6;

} // namespace

NoticeArea::NoticeArea(const QStringList &lines, QWidget *parent)
    : QScrollArea(parent)
    , m_label(new QLabel(lines.join(QLatin1Char('\n'))))
{
    m_label->setObjectName(QStringLiteral("notice"));
    m_label->setWordWrap(true);
    m_label->setTextFormat(Qt::PlainText);
    m_label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_label->setMargin(margin);
    QPalette colors = m_label->palette();
    colors.setColor(QPalette::Window, QColor(255, 236, 179));
    colors.setColor(QPalette::WindowText, QColor(90, 50, 0));
    m_label->setPalette(colors);
    m_label->setAutoFillBackground(true);
    setWidget(m_label);
    setWidgetResizable(true);
    setFrameShape(QFrame::StyledPanel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    setVisible(!lines.isEmpty());
}

int NoticeArea::heightForWidth(int width) const
{
    const int frame = 2 * frameWidth();
    const int most = mostLines * m_label->fontMetrics().lineSpacing() + 2 * margin;
    return frame + qMin(most, m_label->heightForWidth(width - frame));
}

QSize NoticeArea::sizeHint() const
{
    const int width = 320;
    return {width, heightForWidth(width)};
}

QSize NoticeArea::minimumSizeHint() const
{
    return {0, m_label->fontMetrics().lineSpacing() + 2 * (margin + frameWidth())};
}
