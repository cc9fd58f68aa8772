#include "workbench/welleditdialog.h"

#include "base/asker.h"
#include "base/numbers.h"
#include "workbench/fieldform.h"
#include "workbench/numberedit.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QVBoxLayout>

namespace workbench {

namespace {

struct FieldLook
{
    survey::WellField field;
    const char *objectName;
    const char *label;
    const char *unit; ///< "%1" stands for the unit of the survey's depths
};

constexpr std::array<FieldLook, survey::wellFields.size()> fieldLooks{{
    {survey::WellField::Name, "nameEdit", "&Name:", ""},
    {survey::WellField::X, "xEdit", "&X:", "survey coordinates"},
    {survey::WellField::Y, "yEdit", "&Y:", "survey coordinates"},
    {survey::WellField::KbElevation, "kbEdit", "&KB elevation:", "%1 above datum"},
    {survey::WellField::GroundElevation, "groundEdit", "&Ground elevation:", "%1 above datum"},
    {survey::WellField::TotalDepth, "totalDepthEdit", "&Total depth:", "%1 along hole"},
}};

} // namespace

WellEditDialog::WellEditDialog(survey::SurveyStore &store, base::Asker &asker, QWidget *parent)
    : WellEditDialog(store, asker, {}, {}, parent)
{
}

WellEditDialog::WellEditDialog(survey::SurveyStore &store, base::Asker &asker, const QString &key,
                               const survey::WellProperties &properties, QWidget *parent)
    : QDialog(parent)
    , m_store(store)
    , m_asker(asker)
    , m_key(key)
    , m_before(properties)
{
    setObjectName(QStringLiteral("wellEditDialog"));
    setWindowTitle(key.isEmpty() ? QStringLiteral("Add well") : QStringLiteral("Edit well %1").arg(properties.name));
    buildWidgets();
    const survey::WellTexts old = survey::wellTexts(properties);
    for (size_t i = 0; i < fieldLooks.size(); ++i) {
        // A new well starts empty: a 0 in every field would only have to be deleted.
        const survey::WellField field = fieldLooks[i].field;
        if (!key.isEmpty())
            m_edits[i]->setText(old[field]);
        connect(m_edits[i], &QLineEdit::textChanged, this, [this, field, edit = m_edits[i]] {
            if (!m_form->problem(edit).isEmpty())
                showProblem(field);
        });
    }
    if (key.isEmpty())
        m_edits[static_cast<size_t>(survey::WellField::KbElevation)]->setText(QStringLiteral("0"));
    m_edits.front()->selectAll();
}

void WellEditDialog::buildWidgets()
{
    m_form = new FieldForm(this);
    const QString depthUnit = survey::symbol(m_store.depthUnit());
    for (size_t i = 0; i < fieldLooks.size(); ++i) {
        const FieldLook &look = fieldLooks[i];
        m_edits[i] = look.field == survey::WellField::Name ? new QLineEdit(m_form) : new NumberEdit(m_form);
        m_edits[i]->setObjectName(QString::fromLatin1(look.objectName));
        m_form->addField(QString::fromLatin1(look.label), m_edits[i],
                         QString::fromLatin1(look.unit).replace(QLatin1String("%1"), depthUnit));
    }
    m_edits[static_cast<size_t>(survey::WellField::GroundElevation)]->setPlaceholderText(QStringLiteral("Unknown"));

    m_type = new QComboBox(m_form);
    m_type->setObjectName(QStringLiteral("typeCombo"));
    const QStringList types = survey::wellTypeNames();
    for (int code = 0; code < types.size(); ++code)
        m_type->addItem(types.at(code), code);
    // A code that this program does not know is kept as it is.
    if (m_type->findData(m_before.typeCode) < 0)
        m_type->addItem(QStringLiteral("Type %1").arg(m_before.typeCode), m_before.typeCode);
    m_type->setCurrentIndex(m_type->findData(m_before.typeCode));
    m_form->addField(QStringLiteral("Ty&pe:"), m_type);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->setObjectName(QStringLiteral("buttons"));
    connect(buttons, &QDialogButtonBox::accepted, this, &WellEditDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &WellEditDialog::reject);

    auto *column = new QVBoxLayout(this);
    column->addWidget(m_form);
    column->addSpacing(8);
    column->addStretch();
    column->addWidget(buttons);
}

survey::WellTexts WellEditDialog::texts() const
{
    survey::WellTexts texts;
    for (size_t i = 0; i < fieldLooks.size(); ++i)
        texts[fieldLooks[i].field] = m_edits[i]->text();
    return texts;
}

QString WellEditDialog::problemOf(survey::WellField field) const
{
    // An unreadable list of wells is no problem of the name: writing says what is wrong with it.
    return field == survey::WellField::Name ? survey::wellNameProblem(texts()[field], m_store.list().value, m_key)
                                            : survey::wellFieldProblem(field, texts()[field]);
}

void WellEditDialog::showProblem(survey::WellField field)
{
    m_form->setProblem(m_edits[static_cast<size_t>(field)], problemOf(field));
}

// Asks before a smaller total depth takes surveyed points away.
bool WellEditDialog::mayCut(double totalDepth)
{
    const host::Outcome<int> below = m_key.isEmpty() || totalDepth >= m_before.totalDepth
        ? host::Outcome<int>()
        : m_store.trackPointsBelow(m_key, totalDepth);
    if (below.value == 0) // what cannot be read cannot be saved either, which says why
        return true;
    const QString depth =
        QString::fromLatin1(base::formatWritten(totalDepth)) + QLatin1Char(' ') + survey::symbol(m_store.depthUnit());
    const QString points =
        below.value == 1 ? QStringLiteral("1 point") : QStringLiteral("%1 points").arg(below.value);
    return m_asker.confirmLoss(
        windowTitle(),
        QStringLiteral("Set the total depth of the well \"%1\" to %2?\nIts path is cut there: %3 "
                       "below it will be deleted. This cannot be undone.")
            .arg(m_before.name, depth, points));
}

host::Status WellEditDialog::save(const survey::WellProperties &properties)
{
    if (m_key.isEmpty()) {
        const host::Outcome<QString> added = m_store.addWell(properties);
        m_key = added.value;
        m_hasWritten = added.ok();
        return {added.error};
    }
    const host::Status changed = m_store.changeWell(m_key, properties);
    m_hasWritten = m_hasWritten || changed.ok();
    if (!changed.ok() || properties.name == m_before.name)
        return changed;
    return m_store.renameWell(m_key, properties.name);
}

void WellEditDialog::accept()
{
    for (survey::WellField field : survey::wellFields)
        showProblem(field);
    if (m_form->hasProblem()) {
        m_form->focusFirstProblem();
        return;
    }
    const int typeCode = m_type->currentData().toInt();
    const bool isChanged = texts() != survey::wellTexts(m_before) || typeCode != m_before.typeCode;
    if (m_key.isEmpty() || isChanged) {
        survey::WellProperties properties = survey::wellProperties(texts(), m_before);
        properties.typeCode = typeCode;
        if (!mayCut(properties.totalDepth))
            return;
        const host::Status status = save(properties);
        if (!status.ok()) {
            m_asker.warn(windowTitle(), status.error);
            return;
        }
    }
    QDialog::accept();
}

} // namespace workbench
