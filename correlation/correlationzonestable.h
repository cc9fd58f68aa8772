#pragma once

#include "base/tabbedtable.h"
#include "correlation/correlationproperties.h"

QT_BEGIN_NAMESPACE
class QComboBox;
class QLineEdit;
QT_END_NAMESPACE

/// The zones of a correlation: name, choosers of start and end that also take a typed depth, colour, visibility.
class CorrelationZonesTable : public base::TabbedTable
{
    Q_OBJECT

public:
    static constexpr int colorColumn = 3;

    explicit CorrelationZonesTable(QWidget *parent = nullptr);

    /// The markers that the choosers offer behind "User Depth". What is chosen or typed stays; a chosen marker that is
    /// gone gives "User Depth".
    void setMarkers(const QStringList &names);
    /// Adds a row at the end. A start or end that is neither typed nor a marker stands at "User Depth".
    void addZone(const CorrelationZone &zone);
    /// Removes the current row, or the last one when none is current.
    void removeZone();
    QVector<CorrelationZone> zones() const;

    /// The lines into which a depth is typed.
    QLineEdit *startEdit(int row) const;
    QLineEdit *endEdit(int row) const;

    QColor zoneColor(int row) const;
    void setZoneColor(int row, const QColor &color);

signals:
    /// The user changed something in a row.
    void edited();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    /// Space, Enter and F2 in the cell of a colour do what a click there does.
    void keyPressEvent(QKeyEvent *event) override;

private:
    QComboBox *makeChooser(const QString &name);
    void place(QComboBox *chooser, const QString &text, bool isUserDepth) const;
    void typedInto(QComboBox *chooser);
    QComboBox *chooser(int row, int column) const;
    void paintSwatch(int row);

    QStringList m_markers;
};
