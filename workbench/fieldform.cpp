#include "workbench/fieldform.h"

#include "workbench/statecolors.h"

#include <QGridLayout>
#include <QLabel>

namespace workbench {

namespace {

/// A wrapped text that always gets the height it needs: a layout alone does not grow the window for it.
class ProblemLabel : public QLabel
{
public:
    using QLabel::QLabel;

    void showText(const QString &text)
    {
        setText(text);
        setVisible(!text.isEmpty());
        fitHeight();
    }

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        QLabel::resizeEvent(event);
        fitHeight();
    }

private:
    void fitHeight() { setMinimumHeight(text().isEmpty() ? 0 : heightForWidth(width())); }
};

} // namespace

FieldForm::FieldForm(QWidget *parent)
    : QWidget(parent)
    , m_grid(new QGridLayout(this))
{
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setHorizontalSpacing(10);
    m_grid->setVerticalSpacing(4);
    m_grid->setColumnStretch(1, 1);
}

QLabel *FieldForm::addField(const QString &label, QWidget *field, const QString &unit)
{
    QLabel *unitLabel = nullptr;
    if (!unit.isEmpty()) {
        unitLabel = new QLabel(unit, this);
        QPalette palette = unitLabel->palette();
        palette.setColor(QPalette::WindowText, quietText(palette));
        unitLabel->setPalette(palette);
    }
    addField(label, field, unitLabel);
    return unitLabel;
}

void FieldForm::addField(const QString &label, QWidget *field, QWidget *beside)
{
    auto *caption = new QLabel(label, this);
    caption->setBuddy(field);
    auto *problem = new ProblemLabel(this);
    problem->setObjectName(field->objectName() + QStringLiteral("Problem"));
    problem->setTextFormat(Qt::PlainText);
    problem->setWordWrap(true);
    problem->hide();

    const int row = m_grid->rowCount();
    m_grid->addWidget(caption, row, 0);
    m_grid->addWidget(field, row, 1, 1, beside ? 1 : 2);
    if (beside)
        m_grid->addWidget(beside, row, 2);
    m_grid->addWidget(problem, row + 1, 1, 1, 2);
    m_fields.append(field);
    m_problems.insert(field, problem);
}

void FieldForm::setProblem(QWidget *field, const QString &problem)
{
    QLabel *line = m_problems.value(field);
    if (!line)
        return;
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, problemText(palette()));
    line->setPalette(colours);
    static_cast<ProblemLabel *>(line)->showText(problem);
    field->setAccessibleDescription(problem);
}

QString FieldForm::problem(QWidget *field) const
{
    const QLabel *line = m_problems.value(field);
    return line ? line->text() : QString();
}

bool FieldForm::hasProblem() const
{
    for (const QLabel *line : m_problems)
        if (!line->text().isEmpty())
            return true;
    return false;
}

void FieldForm::focusFirstProblem()
{
    for (QWidget *field : m_fields) {
        if (!problem(field).isEmpty()) {
            field->setFocus(Qt::OtherFocusReason);
            return;
        }
    }
}

} // namespace workbench
