#pragma once

#include <QLineEdit>

QT_BEGIN_NAMESPACE
class QValidator;
QT_END_NAMESPACE

/// The line of a number inside a table cell. Its place stands in the dynamic properties "row" and "column".
class CellEdit : public QLineEdit
{
    Q_OBJECT

public:
    /// \a validator is shared by the lines of a table and not owned.
    CellEdit(const QValidator *validator, int row, int column);

    int row() const;
    int column() const;
    /// Shows what the program has to say; no signal.
    void showText(const QString &text);

signals:
    /// Editing finished, or the line was left, with another text than was shown, or finished with, before.
    void edited();

protected:
    void focusOutEvent(QFocusEvent *event) override;

private:
    void finish();

    QString m_known; ///< the text that counts as untouched
};
