#pragma once

#include <QComboBox>

/// Chooses with what a curve is filled: a plain colour (the white first item), or a colour bar. An item's data is the
/// number of its bar; that of the first is 0. A template's index of a bar is the bar's number.
class GradientComboBox : public QComboBox
{
    Q_OBJECT

public:
    /// Lists the bars of the set-up data folder by number, and reads their pictures.
    explicit GradientComboBox(const QString &setupDataFolder, QWidget *parent = nullptr);

    /// Lists the bars of such a list, which it shares with other boxes; \a bars must outlive it.
    explicit GradientComboBox(QAbstractItemModel *bars, QWidget *parent = nullptr);
    /// The list of the bars of the set-up data folder, for boxes that share it.
    static QAbstractItemModel *makeBars(const QString &setupDataFolder, QObject *parent);
    /// Chooses a bar; one that is not listed is added to the list.
    void setBarNumber(int number);

    /// The number of the chosen bar; 0 for none.
    int barNumber() const { return currentData().toInt(); }

signals:
    /// The user chose an item.
    void itemIsActivated(int index);
};
