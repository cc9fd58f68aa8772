#pragma once

#include "las/feet.h"
#include "las/importplan.h"

#include <QWidget>

QT_BEGIN_NAMESPACE
class QComboBox;
class QLabel;
class QStringListModel;
class QTableWidget;
class QTableWidgetItem;
QT_END_NAMESPACE

namespace base {
class CellComboBox;
}
class CurveGroupFinder;
class LasTextBrowser;
struct ProjectData;

/// The page of one LAS file in the import dialog: its well, its curves and its text. Holds everything that belongs
/// to the file.
class WellImportTab : public QWidget
{
    Q_OBJECT

public:
    enum Column { CurveColumn, GroupColumn, SelectColumn, NameColumn };
    /// The item-data role in which an alternate name carries the name of the bound well.
    static constexpr int wellNameRole = 100;
    /// More curves than this are told of, but not listed. Real files have some hundreds at most.
    static constexpr int maximumRows = 10000;

    /// \a projectData must outlive the page.
    WellImportTab(ProjectData &projectData, const WellInfo &file, const QString &title, QWidget *parent = nullptr);

    const WellInfo &file() const { return m_file; }
    QComboBox *wellBox() const { return m_wellBox; }
    QTableWidget *table() const { return m_table; }

    /// Takes over the well that the combo box shows: its maximum depth, and the test of every row. Silent.
    void bindWell();
    /// False when the well could not be read as it was bound.
    bool isWellReadable() const { return m_isWellReadable; }
    bool isInFeet() const { return las::metresPerFeetUnit(m_file.depthUnit).has_value(); }
    /// Paints the row red and clears its check box where the bound well has a log of its alternate name.
    void testRow(QTableWidgetItem *nameItem);
    void testAllRows();

    /// \a convertsFeet: of a file in feet, depths are converted to metres.
    las::ImportTab plan(bool convertsFeet = false) const;

private:
    void buildHead();
    void buildTable();
    void showSelectionMenu(const QPoint &position);
    QString summary() const;
    void paintRow(int row, bool isTaken);
    void paintGroupBox(int row, bool isTaken);
    base::CellComboBox *groupBox(int row) const;
    void addGroupBox(int row, CurveGroupFinder *groups);
    void addGroupBoxesInView();
    QString wellKey() const;
    QStringList logsOfWell() const;

    ProjectData &m_data;
    WellInfo m_file;
    QString m_title;
    double m_wellMaximumDepth = 0;
    bool m_isWellReadable = true;
    QComboBox *m_wellBox = nullptr;
    QLabel *m_summary = nullptr;
    QTableWidget *m_table = nullptr;
    QStringListModel *m_groups = nullptr; ///< one list for all boxes
    LasTextBrowser *m_text = nullptr;
};
