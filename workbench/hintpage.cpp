#include "workbench/hintpage.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace workbench {

namespace {

constexpr int widestText = 640; // longer lines break

} // namespace

HintPage::HintPage(QWidget *parent)
    : QWidget(parent)
    , m_heading(new QLabel(this))
    , m_text(new QLabel(this))
    , m_buttons(new QHBoxLayout)
{
    setObjectName(QStringLiteral("hintPage"));
    m_heading->setObjectName(QStringLiteral("hintHeading"));
    m_heading->setAlignment(Qt::AlignCenter);
    m_heading->setTextFormat(Qt::PlainText);
    QFont large = m_heading->font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    m_heading->setFont(large);
    m_text->setObjectName(QStringLiteral("hintText"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);

    auto *column = new QVBoxLayout(this);
    column->addStretch(2);
    column->addWidget(m_heading);
    column->addSpacing(6);
    auto *block = new QHBoxLayout;
    block->addStretch();
    block->addWidget(m_text);
    block->addStretch();
    column->addLayout(block);
    column->addSpacing(14);
    column->addLayout(m_buttons);
    column->addStretch(3);
}

void HintPage::setHint(const QString &heading, const QString &text, const QList<QAction *> &actions)
{
    if (m_heading->text() == heading && m_text->text() == text)
        return; // the focus stays where it is
    m_heading->setText(heading);
    m_text->setText(text);
    // Steps are read from the left, as a block in the middle; a sentence stands in the middle itself.
    const bool areSteps = text.contains(QLatin1Char('\n'));
    m_text->setAlignment(areSteps ? Qt::AlignLeft : Qt::AlignHCenter);
    const int whole = m_text->fontMetrics().size(0, text).width();
    m_text->setMinimumWidth(qMin(whole, widestText));
    while (QLayoutItem *item = m_buttons->takeAt(0)) {
        if (QWidget *button = item->widget()) {
            button->hide();
            button->deleteLater(); // it may be the one that was just pressed
        }
        delete item;
    }
    setFocusProxy(nullptr);
    m_buttons->addStretch();
    for (QAction *action : actions) {
        auto *button = new QPushButton(action->icon(), action->iconText(), this);
        button->setObjectName(action->objectName() + QStringLiteral("Button"));
        button->setAutoDefault(true);
        connect(button, &QPushButton::clicked, action, &QAction::trigger);
        m_buttons->addWidget(button);
        if (!focusProxy())
            setFocusProxy(button);
    }
    m_buttons->addStretch();
}

} // namespace workbench
