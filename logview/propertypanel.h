#pragma once

#include <QPushButton>
#include <QWidget>

QT_BEGIN_NAMESPACE
class QGridLayout;
QT_END_NAMESPACE

/// A panel of the "Properties" dock: a title and rows of a label and a field.
class PropertyPanel : public QWidget
{
    Q_OBJECT

public:
    /// \a name becomes its object name. Without a title the rows begin at the top.
    explicit PropertyPanel(const QString &name, const QString &title = {}, QWidget *parent = nullptr);

protected:
    /// Takes the field; \a name becomes its object name.
    void addRow(const QString &label, QWidget *field, const QString &name);

private:
    QGridLayout *m_grid;
};

/// A button whose icon is filled with a colour.
class ColorButton : public QPushButton
{
    Q_OBJECT

public:
    explicit ColorButton(const QColor &color, QWidget *parent = nullptr);
    void showColor(const QColor &color);
};
