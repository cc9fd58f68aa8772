#pragma once

#include "templates/curverows.h"
#include "templates/curverowwidgets.h"

#include <QWidget>

#include <memory>
#include <vector>

QT_BEGIN_NAMESPACE
class QComboBox;
class QTableWidget;
QT_END_NAMESPACE

/// One track of a template editor: its type and the table of its curves. The rows are kept as plain data; widgets are
/// made for the rows that are looked at.
class DefTempTrackWidget : public QWidget
{
    Q_OBJECT

public:
    /// \a choices and \a colorBars (see GradientComboBox) are shared by the tracks of an editor and must outlive them.
    DefTempTrackWidget(TemplateChoices &choices, QAbstractItemModel *colorBars, QWidget *parent = nullptr);
    ~DefTempTrackWidget() override;

    /// Shows a track. The widgets of its first rows are made at once, those of the others when they come into sight.
    void setTrack(const TrackInfo &track, int rowsAtOnce);
    const CurveRows &rows() const { return m_rows; }
    /// "Track_" and its number.
    void setTrackName(const QString &name);
    const QString &trackName() const { return m_trackName; }
    /// What a display would draw of it.
    const TrackInfo &track() const;
    /// Puts the keyboard focus into the value that cannot be written.
    void showProblem(const CurveRowProblem &problem);
    /// Makes the widgets of a row, if they are not made yet.
    void makeRow(int row);

signals:
    /// What would be written is another track now.
    void changed();

public slots:
    void addCurveClicked();
    void cellSelected(int row, int column);
    void trackTypeChanged();
    void repopulateCurveBox();
    void removeClicked();
    void pointVisiCheckChanged(bool isShown);
    void pointClrBtnClicked();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    bool isRow(int row) const { return row >= 0 && row < m_rows.size(); }
    CurveRowWidgets *widgetsOf(int row) const { return m_widgets.at(static_cast<size_t>(row)).get(); }
    int senderRow() const;
    void setUpTable();
    void setRowCount(int count);
    void makeRowsInSight();
    void connectRow(const CurveRowWidgets &widgets);
    void takeTabOrder(int row);
    void remakeRows();
    void showAllLimits();
    QString typeTip() const;
    void showTypeTips();
    void rowEdited();
    void setRow(int row, const CurveRow &edited);
    void noteValues(const CurveRow &row);
    void moveCurrentRow(int step);
    bool keyPressed(int key);
    void tellChange();

    TemplateChoices &m_choices;
    CurveRowModels m_models;
    CurveRows m_rows;
    std::vector<std::unique_ptr<CurveRowWidgets>> m_widgets; ///< one for each row; null until made
    QString m_trackName;
    mutable TrackInfo m_track; ///< of m_rows, unless it is out of date
    mutable bool m_isTrackKnown = false;
    bool m_isShowing = false; ///< widgets change because rows are shown, not because the user edits
    QComboBox *m_type;
    QTableWidget *m_table;
    QWidget *m_viewport; ///< of the table, which is no longer asked while it goes
};
