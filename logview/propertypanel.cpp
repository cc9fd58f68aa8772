#include "logview/propertypanel.h"

#include <QGridLayout>
#include <QLabel>
#include <QPixmap>

namespace {

constexpr int colorIconWidth = 48;
constexpr int colorIconHeight = 14;

} // namespace

PropertyPanel::PropertyPanel(const QString &name, const QString &title, QWidget *parent)
    : QWidget(parent)
    , m_grid(new QGridLayout)
{
    setObjectName(name);
    auto *layout = new QVBoxLayout(this);
    if (!title.isEmpty()) {
        auto *label = new QLabel(title);
        label->setObjectName(QStringLiteral("titleLabel"));
        QFont font = label->font();
        font.setBold(true);
        label->setFont(font);
        layout->addWidget(label);
    }
    layout->addLayout(m_grid);
    layout->addStretch();
    m_grid->setColumnStretch(1, 1);
}

void PropertyPanel::addRow(const QString &label, QWidget *field, const QString &name)
{
    const int row = m_grid->rowCount();
    field->setObjectName(name);
    if (auto *text = qobject_cast<QLabel *>(field)) {
        text->setTextFormat(Qt::PlainText); // names from data may look like markup
        // A long name takes further lines: the dock must not grow with it.
        text->setWordWrap(true);
        text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }
    auto *caption = new QLabel(label);
    caption->setBuddy(field);
    m_grid->addWidget(caption, row, 0);
    m_grid->addWidget(field, row, 1);
}

ColorButton::ColorButton(const QColor &color, QWidget *parent)
    : QPushButton(parent)
{
    setIconSize(QSize(colorIconWidth, colorIconHeight));
    showColor(color);
}

void ColorButton::showColor(const QColor &color)
{
    QPixmap picture(iconSize());
    picture.fill(color.isValid() ? color : QColor(Qt::white));
    setIcon(QIcon(picture));
}
