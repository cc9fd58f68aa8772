#pragma once

#include <QHash>
#include <QVector>
#include <QWidget>

QT_BEGIN_NAMESPACE
class QGridLayout;
class QLabel;
QT_END_NAMESPACE

namespace workbench {

/// A form whose fields have a line below them that says what is wrong, and a unit behind them. The line of a field
/// named "xEdit" is named "xEditProblem".
class FieldForm : public QWidget
{
    Q_OBJECT

public:
    explicit FieldForm(QWidget *parent = nullptr);

    /// \a label has a mnemonic for the field; the form's children are the field and all that \a beside holds.
    /// The label of the unit is given back; null without one.
    QLabel *addField(const QString &label, QWidget *field, const QString &unit = {});
    void addField(const QString &label, QWidget *field, QWidget *beside);
    /// An empty text hides the line.
    void setProblem(QWidget *field, const QString &problem);
    QString problem(QWidget *field) const;
    bool hasProblem() const;
    /// Puts the keyboard into the first field with a problem.
    void focusFirstProblem();

private:
    QGridLayout *m_grid = nullptr;
    QVector<QWidget *> m_fields;
    QHash<QWidget *, QLabel *> m_problems;
};

} // namespace workbench
