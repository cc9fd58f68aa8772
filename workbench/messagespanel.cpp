#include "workbench/messagespanel.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QListWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace workbench {

namespace {

constexpr int linesShown = 6;

} // namespace

MessagesPanel::MessagesPanel(QWidget *parent)
    : QWidget(parent)
    , m_title(new QToolButton(this))
    , m_list(new QListWidget(this))
{
    setObjectName(QStringLiteral("messagesPanel"));
    m_title->setObjectName(QStringLiteral("messagesTitle"));
    m_title->setCheckable(true);
    m_title->setChecked(true);
    m_title->setAutoRaise(true);
    m_title->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_title->setToolTip(QStringLiteral("Show or hide the messages"));
    connect(m_title, &QToolButton::toggled, this, [this](bool isChecked) {
        m_list->setVisible(isChecked);
        showTitle();
    });
    m_list->setObjectName(QStringLiteral("messagesList"));
    m_list->setWordWrap(true);
    m_list->setAlternatingRowColors(true);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);

    auto *copy = new QAction(QStringLiteral("&Copy"), m_list);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    connect(copy, &QAction::triggered, this, &MessagesPanel::copySelected);
    m_list->addAction(copy);
    m_list->setContextMenuPolicy(Qt::ActionsContextMenu);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addWidget(m_title);
    column->addWidget(m_list);
    hide();
}

void MessagesPanel::setMessages(const QStringList &messages)
{
    m_list->clear();
    m_list->addItems(messages);
    const int lines = qBound(2, messages.size(), linesShown);
    m_list->setFixedHeight(lines * (m_list->fontMetrics().height() + 4) + 2 * m_list->frameWidth());
    showTitle();
    setVisible(!messages.isEmpty());
}

QStringList MessagesPanel::messages() const
{
    QStringList messages;
    for (int i = 0; i < m_list->count(); ++i)
        messages.append(m_list->item(i)->text());
    return messages;
}

bool MessagesPanel::isUnfolded() const
{
    return m_title->isChecked();
}

void MessagesPanel::setUnfolded(bool isUnfolded)
{
    m_title->setChecked(isUnfolded);
}

void MessagesPanel::copySelected()
{
    QStringList lines;
    for (int i = 0; i < m_list->count(); ++i)
        if (m_list->item(i)->isSelected())
            lines.append(m_list->item(i)->text());
    QApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

void MessagesPanel::showTitle()
{
    m_title->setArrowType(m_title->isChecked() ? Qt::DownArrow : Qt::RightArrow);
    m_title->setText(m_list->count() == 1
                         ? QStringLiteral("1 message about this survey's files")
                         : QStringLiteral("%1 messages about this survey's files").arg(m_list->count()));
}

} // namespace workbench
