#pragma once

#include "survey/surveystore.h"

#include <QDialog>

QT_BEGIN_NAMESPACE
class QLineEdit;
QT_END_NAMESPACE

namespace base {
class Asker;
}

namespace workbench {

class FieldForm;

/// Asks for a well's new name and writes it to the store; when that fails the reason is shown in a box and the dialog
/// stays.
class RenameWellDialog : public QDialog
{
    Q_OBJECT

public:
    RenameWellDialog(survey::SurveyStore &store, base::Asker &asker, const host::WellEntry &well,
                     QWidget *parent = nullptr);

    void accept() override;

private:
    QString problem() const;

    survey::SurveyStore &m_store;
    base::Asker &m_asker;
    host::WellEntry m_well;
    FieldForm *m_form = nullptr;
    QLineEdit *m_name = nullptr;
};

} // namespace workbench
