#pragma once

#include <QComboBox>

/// Chooses a curve group inside a table: turning the wheel over it scrolls the table, Tab passes it by, and Enter or
/// Escape gives the keyboard back to the table.
class CurveGroupBox : public QComboBox
{
    Q_OBJECT

public:
    /// \a groups may be shared by many boxes; \a table gets the keyboard back.
    CurveGroupBox(QAbstractItemModel *groups, QWidget *table);

protected:
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QWidget *m_table;
};
