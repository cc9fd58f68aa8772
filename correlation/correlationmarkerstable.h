#pragma once

#include <QStringList>
#include <QTableWidget>

/// The markers that the wells of a correlation have, each with a box that tells whether it is shown.
class CorrelationMarkersTable : public QTableWidget
{
    Q_OBJECT

public:
    explicit CorrelationMarkersTable(QWidget *parent = nullptr);

    /// One row for each name; boxes that are ticked stay ticked.
    void setMarkers(const QStringList &names);
    const QStringList &markers() const { return m_names; }
    /// Ticks the rows whose trimmed name is among \a names, and no other.
    void setTicked(const QStringList &names);
    /// The trimmed names of the ticked rows, from top to bottom.
    QStringList ticked() const;
    void tickAll(bool areTicked);
    bool areAllTicked() const;

signals:
    /// The user ticked, or cleared, a row's box.
    void tickChanged(bool isTicked);

protected:
    /// Space ticks the current row, or clears it, wherever in the row it is pressed.
    void keyPressEvent(QKeyEvent *event) override;

private:
    QStringList m_names;
};
