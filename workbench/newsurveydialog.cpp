#include "workbench/newsurveydialog.h"

#include "base/asker.h"
#include "workbench/fieldform.h"
#include "workbench/numberedit.h"
#include "workbench/statecolors.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace workbench {

namespace {

struct FieldLook
{
    survey::SurveyField field;
    const char *objectName;
    const char *label;
    const char *unit;
};

constexpr std::array<FieldLook, survey::surveyFields.size()> fieldLooks{{
    {survey::SurveyField::DataRoot, "rootEdit", "&Data root folder:", ""},
    {survey::SurveyField::Name, "nameEdit", "Survey &name:", ""},
    {survey::SurveyField::XMinimum, "xMinimumEdit", "Smallest &X:", "m"},
    {survey::SurveyField::XMaximum, "xMaximumEdit", "&Largest X:", "m"},
    {survey::SurveyField::YMinimum, "yMinimumEdit", "Smallest &Y:", "m"},
    {survey::SurveyField::YMaximum, "yMaximumEdit", "Lar&gest Y:", "m"},
    {survey::SurveyField::MaximumDepth, "maximumDepthEdit", "&Maximum depth:", ""},
}};

} // namespace

NewSurveyDialog::NewSurveyDialog(base::Asker &asker, const FileChooser &chooser, const QString &dataRoot,
                                 QWidget *parent)
    : QDialog(parent)
    , m_asker(asker)
    , m_chooser(chooser)
{
    setObjectName(QStringLiteral("newSurveyDialog"));
    setWindowTitle(QStringLiteral("New survey"));
    buildWidgets();
    survey::SurveyTexts start = survey::defaultSurveyTexts();
    start[survey::SurveyField::DataRoot] = QDir::toNativeSeparators(dataRoot);
    for (survey::SurveyField field : survey::surveyFields) {
        edit(field)->setText(start[field]);
        connect(edit(field), &QLineEdit::textChanged, this, [this] {
            refreshProblems();
            showPath();
        });
    }
    showPath();
    edit(dataRoot.isEmpty() ? survey::SurveyField::DataRoot : survey::SurveyField::Name)->setFocus();
}

void NewSurveyDialog::buildWidgets()
{
    m_form = new FieldForm(this);
    for (size_t i = 0; i < fieldLooks.size(); ++i) {
        const FieldLook &look = fieldLooks[i];
        const bool isText = look.field == survey::SurveyField::DataRoot || look.field == survey::SurveyField::Name;
        m_edits[i] = isText ? new QLineEdit(m_form) : new NumberEdit(m_form);
        m_edits[i]->setObjectName(QString::fromLatin1(look.objectName));
        const QString label = QString::fromLatin1(look.label);
        if (look.field == survey::SurveyField::MaximumDepth) {
            m_unit = new QComboBox(m_form);
            m_unit->setObjectName(QStringLiteral("depthUnitBox"));
            for (const survey::DepthUnit unit : {survey::DepthUnit::Metre, survey::DepthUnit::Foot})
                m_unit->addItem(unit == survey::DepthUnit::Foot ? QStringLiteral("Feet") : QStringLiteral("Metres"),
                                static_cast<int>(unit));
            m_form->addField(QStringLiteral("D&epths and elevations in:"), m_unit);
            connect(m_unit, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                    &NewSurveyDialog::depthUnitChosen);
            m_depthUnit = m_form->addField(label, m_edits[i], survey::symbol(depthUnit()));
            QWidget::setTabOrder(m_edits[i - 1], m_unit);
            QWidget::setTabOrder(m_unit, m_edits[i]);
        } else if (look.field == survey::SurveyField::DataRoot) {
            auto *browseButton = new QPushButton(QStringLiteral("&Browse…"), m_form);
            browseButton->setObjectName(QStringLiteral("browseButton"));
            connect(browseButton, &QPushButton::clicked, this, &NewSurveyDialog::browse);
            m_form->addField(label, m_edits[i], browseButton);
        } else {
            m_form->addField(label, m_edits[i], QString::fromLatin1(look.unit));
        }
    }
    edit(survey::SurveyField::DataRoot)->setMinimumWidth(360);

    m_path = new QLabel(this);
    m_path->setObjectName(QStringLiteral("pathLabel"));
    m_path->setTextFormat(Qt::PlainText);
    m_path->setWordWrap(true);
    QPalette quiet = m_path->palette();
    quiet.setColor(QPalette::WindowText, quietText(quiet));
    m_path->setPalette(quiet);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->setObjectName(QStringLiteral("buttons"));
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("Create &survey"));
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &NewSurveyDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &NewSurveyDialog::reject);

    auto *column = new QVBoxLayout(this);
    column->addWidget(m_form);
    column->addSpacing(8);
    column->addWidget(m_path);
    column->addStretch();
    column->addWidget(buttons);
}

void NewSurveyDialog::browse()
{
    const QString folder =
        m_chooser.chooseFolder(this, QStringLiteral("Data root folder"), edit(survey::SurveyField::DataRoot)->text());
    if (!folder.isEmpty())
        edit(survey::SurveyField::DataRoot)->setText(QDir::toNativeSeparators(folder));
}

survey::SurveyTexts NewSurveyDialog::texts() const
{
    survey::SurveyTexts texts;
    for (survey::SurveyField field : survey::surveyFields)
        texts[field] = edit(field)->text();
    return texts;
}

survey::DepthUnit NewSurveyDialog::depthUnit() const
{
    return static_cast<survey::DepthUnit>(m_unit->currentData().toInt());
}

// What the user typed stays; what was proposed is proposed in the new unit.
void NewSurveyDialog::depthUnitChosen()
{
    QLineEdit *depth = edit(survey::SurveyField::MaximumDepth);
    for (const survey::DepthUnit unit : {survey::DepthUnit::Metre, survey::DepthUnit::Foot})
        if (depth->text() == survey::defaultMaximumDepth(unit)) {
            depth->setText(survey::defaultMaximumDepth(depthUnit()));
            break;
        }
    m_depthUnit->setText(survey::symbol(depthUnit()));
}

// A problem that is shown follows what is typed; a new one waits for "Create survey".
void NewSurveyDialog::refreshProblems()
{
    const survey::SurveyTexts current = texts();
    for (survey::SurveyField field : survey::surveyFields)
        if (!m_form->problem(edit(field)).isEmpty())
            m_form->setProblem(edit(field), survey::surveyFieldProblem(field, current));
}

void NewSurveyDialog::showPath()
{
    const QString path = survey::surveyPath(texts());
    m_path->setText(path.isEmpty() ? QStringLiteral("The survey gets a folder of its own in the data root.")
                                   : QStringLiteral("The survey's folder: %1").arg(path));
}

void NewSurveyDialog::accept()
{
    const survey::SurveyTexts current = texts();
    for (survey::SurveyField field : survey::surveyFields)
        m_form->setProblem(edit(field), survey::surveyFieldProblem(field, current));
    if (m_form->hasProblem()) {
        m_form->focusFirstProblem();
        return;
    }
    const QString path = survey::surveyPath(current);
    const host::Status status = survey::createSurvey(path, survey::newSurvey(current, depthUnit()));
    if (!status.ok()) {
        m_asker.warn(windowTitle(), status.error);
        return;
    }
    m_created = path;
    QDialog::accept();
}

} // namespace workbench
