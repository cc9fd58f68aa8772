#include "templates/curverowwidgets.h"

#include "base/cellproperties.h"
#include "base/gradientcombobox.h"
#include "base/linestylebox.h"
#include "base/numbervalidator.h"
#include "templates/filllimit.h"
#include "templates/filllimitmodel.h"
#include "templates/templatechoices.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>

namespace {

constexpr int valueWidth = 40;
constexpr int frameWidth = 4; // of a value's field, both sides
constexpr double smallerFont = 2.5; // points
constexpr int lineBoxWidth = 80;
constexpr int swatchSide = 100;
const char colorProperty[] = "clr";

QComboBox *makeBox(const QStringList &texts)
{
    auto *box = new QComboBox;
    box->addItems(texts);
    return box;
}

QLineEdit *makeValueEdit()
{
    auto *edit = new QLineEdit;
    edit->setMaximumWidth(valueWidth);
    edit->setFrame(false); // there is room for few digits
    QFont font = edit->font();
    font.setPointSizeF(font.pointSizeF() - smallerFont);
    edit->setFont(font);
    edit->setValidator(new base::NumberValidator(edit));
    return edit;
}

// A text that is no choice stays as one more.
void choose(QComboBox *box, const QString &text)
{
    if (box->findText(text) < 0)
        box->addItem(text);
    box->setCurrentIndex(box->findText(text));
}

// A limit that the track has not is shown in grey and stays until another one is chosen.
void showLimit(QComboBox *box, const QString &text, const QString &boundary, int curveCount)
{
    const int index = filllimit::index(text, boundary, curveCount);
    box->setPlaceholderText(index < 0 ? text : QString());
    box->setCurrentIndex(index);
}

QString chosenLimit(const QComboBox *box, const QString &boundary, const QString &before)
{
    return box->currentIndex() < 0 ? before : filllimit::text(box->currentIndex(), boundary);
}

void showValueTip(QLineEdit *edit, const QString &shown, const QString &written, const QString &typeTip)
{
    const bool isWhole = shown == written && edit->fontMetrics().horizontalAdvance(shown) <= valueWidth - frameWidth;
    QStringList tips{isWhole ? QString() : QStringLiteral("In full: %1").arg(written), typeTip};
    tips.removeAll(QString());
    edit->setToolTip(tips.join(QLatin1Char('\n')));
}

} // namespace

CurveRowWidgets::CurveRowWidgets(QTableWidget *table, int row, bool isDepth, const CurveRowModels &models)
    : m_table(table)
    , m_row(row)
    , m_choices(*models.choices)
    , m_cells(curvecolumn::Count, nullptr)
{
    m_group = put(curvecolumn::Group, makeBox(m_choices.groups()));
    m_curve = put(curvecolumn::Curve, new QComboBox);
    m_leftValue = put(curvecolumn::LeftValue, makeValueEdit());
    m_rightValue = put(curvecolumn::RightValue, makeValueEdit());
    if (!isDepth)
        makeCurveCells(models);
    auto *remove = put(curvecolumn::Remove, new QPushButton(QStringLiteral("Remove")));
    remove->setAutoDefault(false);
}

template<class Widget>
Widget *CurveRowWidgets::put(int column, Widget *widget)
{
    widget->setProperty(base::rowProperty, m_row);
    widget->setFocusPolicy(Qt::StrongFocus); // the wheel alone gives no focus, and without it turns no chooser
    m_table->setCellWidget(m_row, column, widget);
    m_cells[column] = widget;
    return widget;
}

void CurveRowWidgets::makeCurveCells(const CurveRowModels &models)
{
    m_color = new QTableWidgetItem;
    m_color->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    m_table->setItem(m_row, curvecolumn::Color, m_color);
    m_leftFill = put(curvecolumn::LeftFill, new GradientComboBox(models.colorBars));
    m_rightFill = put(curvecolumn::RightFill, new GradientComboBox(models.colorBars));
    m_leftLimit = put(curvecolumn::LeftLimit, new QComboBox);
    m_leftLimit->setModel(models.leftLimits);
    m_rightLimit = put(curvecolumn::RightLimit, new QComboBox);
    m_rightLimit->setModel(models.rightLimits);
    for (QComboBox *box : {m_leftLimit, m_rightLimit})
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon); // asks no item for its width
    m_lineType = put(curvecolumn::LineType, new base::LineStyleBox);
    m_lineWidth = put(curvecolumn::LineWidth, new base::LineWidthBox);
    m_lineType->setFixedWidth(lineBoxWidth);
    m_lineWidth->setFixedWidth(lineBoxWidth);
    m_calibration = put(curvecolumn::Calibration, new QCheckBox(QStringLiteral("Visibility")));
    m_pointColor = put(curvecolumn::PointColor, new QPushButton);
    m_pointColor->setAutoDefault(false);
    m_pointColor->setIconSize(QSize(swatchSide, swatchSide));
    m_pointSize = put(curvecolumn::PointSize, new QSpinBox);
    m_pointSize->setRange(1, CurveRow::largestPointSize);
    m_pointShape = put(curvecolumn::PointShape, makeBox({QStringLiteral("Rectangle"), QStringLiteral("Circle")}));
}

void CurveRowWidgets::show(const CurveRow &row, int curveCount)
{
    choose(m_group, row.group);
    showCurves(row);
    showValues(row);
    if (!m_color)
        return;
    m_color->setBackground(row.color);
    m_leftFill->setBarNumber(row.leftFillIndex);
    m_rightFill->setBarNumber(row.rightFillIndex);
    showLimits(row, curveCount);
    m_lineType->setCurrentIndex(row.lineTypeIndex);
    m_lineWidth->setCurrentIndex(row.lineWidthIndex);
    m_calibration->setChecked(row.isCalibrationShown);
    setPointColor(row.pointColor);
    m_pointSize->setValue(row.pointSize);
    m_pointShape->setCurrentText(row.pointShape);
    enablePointCells(row.isCalibrationShown);
}

void CurveRowWidgets::showLimits(const CurveRow &row, int curveCount)
{
    if (!m_leftLimit)
        return;
    showLimit(m_leftLimit, row.leftUpTo, filllimit::leftBoundary(), curveCount);
    showLimit(m_rightLimit, row.rightUpTo, filllimit::rightBoundary(), curveCount);
}

void CurveRowWidgets::showCurves(const CurveRow &row)
{
    m_curve->clear();
    m_curve->addItems(m_choices.curves(row.group));
    choose(m_curve, row.curve);
}

void CurveRowWidgets::showValues(const CurveRow &row)
{
    m_leftValue->setText(row.shownMinimum);
    m_rightValue->setText(row.shownMaximum);
    m_leftValue->setCursorPosition(0); // of a long one the first digits are seen
    m_rightValue->setCursorPosition(0);
    showValueTips(row);
}

void CurveRowWidgets::showValueTips(const CurveRow &row)
{
    showValueTip(m_leftValue, row.shownMinimum, row.minimum, m_typeTip);
    showValueTip(m_rightValue, row.shownMaximum, row.maximum, m_typeTip);
}

void CurveRowWidgets::readInto(CurveRow *row) const
{
    row->group = m_group->currentText();
    row->curve = m_curve->currentText();
    if (m_leftValue->text() != row->shownMinimum)
        row->setMinimum(m_leftValue->text());
    if (m_rightValue->text() != row->shownMaximum)
        row->setMaximum(m_rightValue->text());
    if (!m_color)
        return;
    row->color = m_color->background().color();
    row->leftFillIndex = m_leftFill->barNumber();
    row->rightFillIndex = m_rightFill->barNumber();
    row->leftUpTo = chosenLimit(m_leftLimit, filllimit::leftBoundary(), row->leftUpTo);
    row->rightUpTo = chosenLimit(m_rightLimit, filllimit::rightBoundary(), row->rightUpTo);
    row->lineTypeIndex = m_lineType->currentIndex();
    row->lineWidthIndex = m_lineWidth->currentIndex();
    row->isCalibrationShown = m_calibration->isChecked();
    row->pointColor = QColor(m_pointColor->property(colorProperty).toString());
    row->pointSize = m_pointSize->value();
    row->pointShape = m_pointShape->currentText();
}

void CurveRowWidgets::setRowNumber(int row)
{
    m_row = row;
    for (QWidget *widget : qAsConst(m_cells))
        if (widget)
            widget->setProperty(base::rowProperty, row);
}

QVector<QWidget *> CurveRowWidgets::all() const
{
    QVector<QWidget *> widgets = m_cells;
    widgets.removeAll(nullptr);
    return widgets;
}

void CurveRowWidgets::setPointColor(const QColor &color)
{
    QPixmap swatch(swatchSide, swatchSide);
    swatch.fill(color);
    m_pointColor->setIcon(swatch);
    m_pointColor->setProperty(colorProperty, color.name());
}

void CurveRowWidgets::enablePointCells(bool areEnabled)
{
    for (QWidget *cell : {static_cast<QWidget *>(m_pointColor), static_cast<QWidget *>(m_pointSize),
                          static_cast<QWidget *>(m_pointShape)})
        if (cell)
            cell->setEnabled(areEnabled);
}
