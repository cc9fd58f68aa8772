#pragma once

#include <QLineEdit>

namespace base {

/// A line for one number (see NumberValidator) that tells an edit from a visit: Qt's editingFinished() comes also when
/// a field was only passed with the Tab key.
class NumberField : public QLineEdit
{
    Q_OBJECT

public:
    explicit NumberField(QWidget *parent = nullptr);

    /// Shows what the program has to say; no signal.
    void showText(const QString &text);
    /// Types the text and finishes, as a user does with Enter.
    void enterText(const QString &text);

signals:
    /// Editing finished with another text than was shown, or finished with, before.
    void edited();

protected:
    /// What is no number when the field is left is put back.
    void focusOutEvent(QFocusEvent *event) override;

private:
    void finish();

    QString m_known; ///< the text that counts as untouched
};

} // namespace base
