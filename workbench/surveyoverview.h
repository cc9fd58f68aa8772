#pragma once

#include "survey/depthunit.h"
#include "survey/wellsummary.h"

#include <QWidget>

QT_BEGIN_NAMESPACE
class QLabel;
class QLineEdit;
class QModelIndex;
class QSortFilterProxyModel;
class QSplitter;
class QTableView;
QT_END_NAMESPACE

namespace workbench {

class BaseMap;
class WellsModel;

/// The wells of a survey as a table and as a base map; a well selected in one is selected in the other.
class SurveyOverview : public QWidget
{
    Q_OBJECT

public:
    explicit SurveyOverview(QWidget *parent = nullptr);

    /// The selected well stays selected if it is still there.
    void setWells(const QVector<survey::WellSummary> &wells, survey::DepthUnit unit);
    /// Empty when none is selected.
    QString selectedKey() const;
    /// The well that takes the place of the selected one when that goes: the one below, else above; empty without one.
    QString neighbourKey() const;
    /// Takes away a filter that hides the well.
    void selectWell(const QString &key);
    /// The wells that come next are those of another survey: all of them are shown, in columns of their widths.
    void beginSurvey();

    /// Of the border between table and map; empty as long as the user left it to the table's columns.
    QByteArray saveState() const;
    void restoreState(const QByteArray &state);

signals:
    /// A double click, or Enter.
    void wellActivated(const QString &key);
    /// The context menu of a well is wanted at a place of the screen; the well is selected.
    void wellMenuRequested(const QString &key, const QPoint &place);
    /// F2 in the table.
    void wellRenameRequested(const QString &key);
    /// Delete in the table.
    void wellDeletionRequested(const QString &key);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void buildTable();
    void addTableKey(const QKeySequence &keys, void (SurveyOverview::*requested)(const QString &));
    void fitColumns();
    void arrange();
    void selectRow(int row);
    int currentRow() const;
    void tellNoMatch();

    WellsModel *m_model = nullptr;
    QSortFilterProxyModel *m_sorted = nullptr;
    QLineEdit *m_filter = nullptr;
    QTableView *m_table = nullptr;
    QLabel *m_noMatch = nullptr; ///< over the table when the filter hides all wells
    BaseMap *m_map = nullptr;
    QSplitter *m_splitter = nullptr;
    int m_columnsWidth = 0; ///< of all columns as they fit their texts
    bool m_isNew = true; ///< no wells of the survey were shown yet
    bool m_isPlaced = false; ///< the splitter stands where the user put it
};

} // namespace workbench
