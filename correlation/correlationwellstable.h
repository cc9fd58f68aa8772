#pragma once

#include "base/tabbedtable.h"
#include "correlation/correlationproperties.h"

QT_BEGIN_NAMESPACE
class QComboBox;
QT_END_NAMESPACE

struct ProjectData;

/// The wells of a correlation from left to right: in each row a chooser of a well and one of its templates.
class CorrelationWellsTable : public base::TabbedTable
{
    Q_OBJECT

public:
    /// \a projectData must outlive the table.
    explicit CorrelationWellsTable(ProjectData &projectData, QWidget *parent = nullptr);

    /// Adds a row at the end. A name that is none of the choosers' leaves them at their first entry.
    void addWell(const CorrelationWell &well = {});
    /// Adds a row for the next well behind that of the row above that has none yet, with the template of that row.
    void addNextWell();
    /// The survey's wells and templates may be others now. What is chosen stays where it still exists.
    void refill();
    /// Removes the current row, or the last one when none is current.
    void removeWell();
    /// Moves the current row up (-1) or down (1), with the keyboard where it is; nothing at the end of the table.
    void moveCurrentWell(int step);
    QVector<CorrelationWell> wells() const;
    /// Brings the lists of all template choosers up to date; what is chosen stays, also where it is gone.
    void offerTemplates();

signals:
    /// The user chose another well; the sender of the chooser has the property "row".
    void wellChosen();
    void templateChosen();
    /// The user put the wells in another order.
    void wellMoved();

private:
    QComboBox *chooser(int row, int column) const;
    void refillTemplates(int row);
    void renumber();
    void showWell(int row, const CorrelationWell &well);
    void showMenu(const QPoint &place);
    QStringList templatesOf(const QString &wellName) const;

    ProjectData &m_data;
};
