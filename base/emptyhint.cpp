#include "base/emptyhint.h"

#include <QGridLayout>
#include <QLabel>
#include <QTabWidget>

namespace base {

QLabel *emptyHint(const QString &text)
{
    auto *hint = new QLabel(text);
    hint->setObjectName(QStringLiteral("emptyHint"));
    hint->setTextFormat(Qt::PlainText);
    hint->setAlignment(Qt::AlignCenter);
    hint->setWordWrap(true);
    hint->setMargin(24);
    return hint;
}

QLabel *fillWithTabs(QWidget *area, QTabWidget *tabs, const QString &hintText)
{
    auto *layout = new QGridLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tabs, 0, 0);
    QLabel *hint = emptyHint(hintText);
    layout->addWidget(hint, 0, 0); // over the tabs, which show nothing then
    QObject::connect(tabs, &QTabWidget::currentChanged, hint, [hint](int tab) { hint->setVisible(tab < 0); });
    return hint;
}

} // namespace base
