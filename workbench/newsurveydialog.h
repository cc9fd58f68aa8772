#pragma once

#include "survey/surveyinput.h"
#include "workbench/filechooser.h"

#include <QDialog>

QT_BEGIN_NAMESPACE
class QComboBox;
class QLabel;
class QLineEdit;
QT_END_NAMESPACE

namespace base {
class Asker;
}

namespace workbench {

class FieldForm;

/// Asks for a new survey and makes its folder; when that fails the reason is shown in a box and the dialog stays.
class NewSurveyDialog : public QDialog
{
    Q_OBJECT

public:
    /// \a dataRoot is proposed as the folder for the survey.
    NewSurveyDialog(base::Asker &asker, const FileChooser &chooser, const QString &dataRoot,
                    QWidget *parent = nullptr);

    /// The folder of the survey that was made; empty before.
    QString createdSurvey() const { return m_created; }

    void accept() override;

private:
    void buildWidgets();
    void browse();
    survey::SurveyTexts texts() const;
    QLineEdit *edit(survey::SurveyField field) const { return m_edits[static_cast<size_t>(field)]; }
    survey::DepthUnit depthUnit() const;
    void depthUnitChosen();
    void refreshProblems();
    void showPath();

    base::Asker &m_asker;
    FileChooser m_chooser;
    FieldForm *m_form = nullptr;
    std::array<QLineEdit *, survey::surveyFields.size()> m_edits{};
    QComboBox *m_unit = nullptr;
    QLabel *m_depthUnit = nullptr; ///< behind the maximum depth
    QLabel *m_path = nullptr;
    QString m_created;
};

} // namespace workbench
