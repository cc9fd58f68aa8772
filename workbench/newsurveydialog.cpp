#include "workbench/newsurveydialog.h"

#include "base/asker.h"
#include "workbench/fieldform.h"
#include "workbench/numberedit.h"
#include "workbench/statecolors.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace workbench {

namespace {

struct FieldLook
{
    SurveyField field;
    const char *objectName;
    const char *label;
    const char *unit;
};

constexpr std::array<FieldLook, surveyFields.size()> fieldLooks{{
    {SurveyField::DataRoot, "rootEdit", "&Data root folder:", ""},
    {SurveyField::Name, "nameEdit", "Survey &name:", ""},
    {SurveyField::XMinimum, "xMinimumEdit", "Smallest &X:", "m"},
    {SurveyField::XMaximum, "xMaximumEdit", "&Largest X:", "m"},
    {SurveyField::YMinimum, "yMinimumEdit", "Smallest &Y:", "m"},
    {SurveyField::YMaximum, "yMaximumEdit", "Lar&gest Y:", "m"},
    {SurveyField::MaximumDepth, "maximumDepthEdit", "&Maximum depth:", "m"},
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
    SurveyTexts start = defaultSurveyTexts();
    start[SurveyField::DataRoot] = QDir::toNativeSeparators(dataRoot);
    for (SurveyField field : surveyFields) {
        edit(field)->setText(start[field]);
        connect(edit(field), &QLineEdit::textChanged, this, [this] {
            refreshProblems();
            showPath();
        });
    }
    showPath();
    edit(dataRoot.isEmpty() ? SurveyField::DataRoot : SurveyField::Name)->setFocus();
}

void NewSurveyDialog::buildWidgets()
{
    m_form = new FieldForm(this);
    for (size_t i = 0; i < fieldLooks.size(); ++i) {
        const FieldLook &look = fieldLooks[i];
        const bool isText = look.field == SurveyField::DataRoot || look.field == SurveyField::Name;
        m_edits[i] = isText ? new QLineEdit(m_form) : new NumberEdit(m_form);
        m_edits[i]->setObjectName(QString::fromLatin1(look.objectName));
        const QString label = QString::fromLatin1(look.label);
        if (look.field == SurveyField::DataRoot) {
            auto *browseButton = new QPushButton(QStringLiteral("&Browse…"), m_form);
            browseButton->setObjectName(QStringLiteral("browseButton"));
            connect(browseButton, &QPushButton::clicked, this, &NewSurveyDialog::browse);
            m_form->addField(label, m_edits[i], browseButton);
        } else {
            m_form->addField(label, m_edits[i], QString::fromLatin1(look.unit));
        }
    }
    edit(SurveyField::DataRoot)->setMinimumWidth(360);

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
        m_chooser.chooseFolder(this, QStringLiteral("Data root folder"), edit(SurveyField::DataRoot)->text());
    if (!folder.isEmpty())
        edit(SurveyField::DataRoot)->setText(QDir::toNativeSeparators(folder));
}

SurveyTexts NewSurveyDialog::texts() const
{
    SurveyTexts texts;
    for (SurveyField field : surveyFields)
        texts[field] = edit(field)->text();
    return texts;
}

// A problem that is shown follows what is typed; a new one waits for "Create survey".
void NewSurveyDialog::refreshProblems()
{
    const SurveyTexts current = texts();
    for (SurveyField field : surveyFields)
        if (!m_form->problem(edit(field)).isEmpty())
            m_form->setProblem(edit(field), surveyFieldProblem(field, current));
}

void NewSurveyDialog::showPath()
{
    const QString path = surveyPath(texts());
    m_path->setText(path.isEmpty() ? QStringLiteral("The survey gets a folder of its own in the data root.")
                                   : QStringLiteral("The survey's folder: %1").arg(path));
}

void NewSurveyDialog::accept()
{
    const SurveyTexts current = texts();
    for (SurveyField field : surveyFields)
        m_form->setProblem(edit(field), surveyFieldProblem(field, current));
    if (m_form->hasProblem()) {
        m_form->focusFirstProblem();
        return;
    }
    const QString path = surveyPath(current);
    const host::Status status = createSurvey(path, newSurvey(current));
    if (!status.ok()) {
        m_asker.warn(windowTitle(), status.error);
        return;
    }
    m_created = path;
    QDialog::accept();
}

} // namespace workbench
