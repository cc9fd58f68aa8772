#pragma once

#include "survey/topsplan.h"
#include "workbench/proposalmodel.h"

namespace workbench {

/// What tops come to in the survey's wells, as a table in which the user chooses the wells. What is wrong is red.
class TopsModel : public ProposalModel
{
    Q_OBJECT

public:
    enum Column {
        NameColumn,
        WellColumn,
        AddedColumn,
        MovedColumn,
        FurthestColumn,
        UnchangedColumn,
        LeftOutColumn,
        NotesColumn,
        ColumnCount
    };

    explicit TopsModel(const survey::TopsPlan &plan, QObject *parent = nullptr);

    const survey::TopsPlan &plan() const { return m_plan; }
    void add(const QVector<survey::TopsInput> &files);
    void setUnit(survey::DepthUnit unit);
    void write(survey::SurveyStore &store, int row);

    /// The value of the well's cell is its index in the plan, -1 for none.
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

protected:
    int proposalCount() const override { return m_plan.rows().size(); }

private:
    QString wellText(const survey::TopsRow &row) const;
    QString numberText(const survey::TopsRow &row, int column) const;

    survey::TopsPlan m_plan;
};

/// What stands in place of a well where the tops of a row are left out.
QString leaveOutText();

} // namespace workbench
