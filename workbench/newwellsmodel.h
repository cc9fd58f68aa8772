#pragma once

#include "survey/newwells.h"
#include "workbench/proposalmodel.h"

#include <functional>

namespace workbench {

/// The proposed wells as a table in which the user corrects them. What is wrong is red, with the reason as tool tip.
class NewWellsModel : public ProposalModel
{
    Q_OBJECT

public:
    enum Column {
        ChosenColumn,
        FileColumn,
        NameColumn,
        XColumn,
        YColumn,
        KbColumn,
        GroundColumn,
        TotalDepthColumn,
        LogsColumn,
        NotesColumn,
        ColumnCount
    };

    explicit NewWellsModel(const survey::WellNames &existing, survey::DepthUnit unit = survey::DepthUnit::Metre,
                           QObject *parent = nullptr);

    const survey::NewWells &newWells() const { return m_wells; }
    /// Called after each file; false ends the reading.
    using Progress = std::function<bool(int done)>;
    void addFiles(const QStringList &paths, const Progress &progress = {});
    void setNameSource(survey::NameSource source);
    void setNameSource(const QVector<int> &rows, survey::NameSource source);
    void setCodec(const QByteArray &codec);
    void uncheckProblems();
    void setMade(const QVector<int> &rows, const QVector<survey::MadeWell> &made);

    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

protected:
    int proposalCount() const override { return m_wells.wells().size(); }

private:
    survey::NewWells m_wells;
};

} // namespace workbench
