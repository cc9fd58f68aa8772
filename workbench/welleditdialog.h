#pragma once

#include "survey/surveystore.h"
#include "survey/wellinput.h"

#include <QDialog>

QT_BEGIN_NAMESPACE
class QComboBox;
class QLineEdit;
QT_END_NAMESPACE

namespace base {
class Asker;
}

namespace workbench {

class FieldForm;

/// Asks for the header of a new well or changes that of an old one. "OK" writes to the store; when that fails the
/// reason is shown in a box and the dialog stays.
class WellEditDialog : public QDialog
{
    Q_OBJECT

public:
    /// For a new well.
    WellEditDialog(survey::SurveyStore &store, base::Asker &asker, QWidget *parent = nullptr);
    /// For the well \a key, which has these properties.
    WellEditDialog(survey::SurveyStore &store, base::Asker &asker, const QString &key,
                   const survey::WellProperties &properties, QWidget *parent = nullptr);

    /// The well that was added or changed.
    QString wellKey() const { return m_key; }
    /// Whether anything was written, which may be so even when a later step failed and the user gave up.
    bool hasWritten() const { return m_hasWritten; }

    void accept() override;

private:
    void buildWidgets();
    survey::WellTexts texts() const;
    void showProblem(survey::WellField field);
    QString problemOf(survey::WellField field) const;
    bool mayCut(double totalDepth);
    host::Status save(const survey::WellProperties &properties);

    survey::SurveyStore &m_store;
    base::Asker &m_asker;
    QString m_key; ///< empty for a new well
    survey::WellProperties m_before;
    FieldForm *m_form = nullptr;
    std::array<QLineEdit *, survey::wellFields.size()> m_edits{};
    QComboBox *m_type = nullptr;
    bool m_hasWritten = false;
};

} // namespace workbench
