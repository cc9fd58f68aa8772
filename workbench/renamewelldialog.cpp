#include "workbench/renamewelldialog.h"

#include "base/asker.h"
#include "survey/wellinput.h"
#include "workbench/fieldform.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QVBoxLayout>

namespace workbench {

RenameWellDialog::RenameWellDialog(survey::SurveyStore &store, base::Asker &asker, const host::WellEntry &well,
                                   QWidget *parent)
    : QDialog(parent)
    , m_store(store)
    , m_asker(asker)
    , m_well(well)
    , m_form(new FieldForm(this))
    , m_name(new QLineEdit(well.name, m_form))
{
    setObjectName(QStringLiteral("renameWellDialog"));
    setWindowTitle(QStringLiteral("Rename well %1").arg(well.name));
    m_name->setObjectName(QStringLiteral("nameEdit"));
    m_name->setMinimumWidth(280);
    m_name->selectAll();
    m_form->addField(QStringLiteral("&New name:"), m_name);
    connect(m_name, &QLineEdit::textChanged, this, [this] {
        if (!m_form->problem(m_name).isEmpty())
            m_form->setProblem(m_name, problem());
    });
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->setObjectName(QStringLiteral("buttons"));
    connect(buttons, &QDialogButtonBox::accepted, this, &RenameWellDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &RenameWellDialog::reject);
    auto *column = new QVBoxLayout(this);
    column->addWidget(m_form);
    column->addStretch();
    column->addWidget(buttons);
}

QString RenameWellDialog::problem() const
{
    return survey::wellNameProblem(m_name->text(), m_store.list().value, m_well.key);
}

void RenameWellDialog::accept()
{
    const QString name = m_name->text().trimmed();
    m_form->setProblem(m_name, problem());
    if (m_form->hasProblem()) {
        m_form->focusFirstProblem();
        return;
    }
    if (name != m_well.name) {
        const host::Status status = m_store.renameWell(m_well.key, name);
        if (!status.ok()) {
            m_asker.warn(windowTitle(), status.error);
            return;
        }
    }
    QDialog::accept();
}

} // namespace workbench
