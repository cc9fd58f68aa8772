#pragma once

#include "templates/curvecolumn.h"
#include "templates/curverows.h"

QT_BEGIN_NAMESPACE
class QAbstractItemModel;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QSpinBox;
class QTableWidget;
class QTableWidgetItem;
class QWidget;
QT_END_NAMESPACE

class FillLimitModel;
class GradientComboBox;
class TemplateChoices;

/// What the choosers of all rows share. Nothing is owned.
struct CurveRowModels
{
    const TemplateChoices *choices = nullptr;
    QAbstractItemModel *colorBars = nullptr;
    FillLimitModel *leftLimits = nullptr;
    FillLimitModel *rightLimits = nullptr;
};

/// The widgets in the cells of one row of a curve table. A row of a depth track has the first four and the button
/// "Remove" only. The table owns them; each knows its row by the property "row".
class CurveRowWidgets
{
public:
    /// Makes the widgets in the row's cells.
    CurveRowWidgets(QTableWidget *table, int row, bool isDepth, const CurveRowModels &models);

    /// Shows a row of a track of \a curveCount curves.
    void show(const CurveRow &row, int curveCount);
    void showLimits(const CurveRow &row, int curveCount);
    /// Fills the chooser of curves for the row's group.
    void showCurves(const CurveRow &row);
    void showValues(const CurveRow &row);
    /// Tells what a value is in full where not all of it is shown.
    void showValueTips(const CurveRow &row);
    /// What is to be said of the values of such a track; shown with the next tips.
    void setTypeTip(const QString &tip) { m_typeTip = tip; }
    /// Takes over what the user changed.
    void readInto(CurveRow *row) const;

    void setRowNumber(int row);
    /// In the order in which the Tab key visits them.
    QVector<QWidget *> all() const;
    /// Null for a cell without widget.
    QWidget *at(int column) const { return m_cells.value(column); }

    void setPointColor(const QColor &color);
    void enablePointCells(bool areEnabled);

private:
    template<class Widget>
    Widget *put(int column, Widget *widget);
    void makeCurveCells(const CurveRowModels &models);

    QTableWidget *m_table;
    int m_row;
    const TemplateChoices &m_choices;
    QVector<QWidget *> m_cells;
    QString m_typeTip;
    QTableWidgetItem *m_color = nullptr; ///< null in a depth track, like all below
    QComboBox *m_group = nullptr;
    QComboBox *m_curve = nullptr;
    QLineEdit *m_leftValue = nullptr;
    QLineEdit *m_rightValue = nullptr;
    GradientComboBox *m_leftFill = nullptr;
    GradientComboBox *m_rightFill = nullptr;
    QComboBox *m_leftLimit = nullptr;
    QComboBox *m_rightLimit = nullptr;
    QComboBox *m_lineType = nullptr;
    QComboBox *m_lineWidth = nullptr;
    QCheckBox *m_calibration = nullptr;
    QPushButton *m_pointColor = nullptr;
    QSpinBox *m_pointSize = nullptr;
    QComboBox *m_pointShape = nullptr;
};
