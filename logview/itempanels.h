#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QWidget>

QT_BEGIN_NAMESPACE
class QGraphicsItem;
QT_END_NAMESPACE

/// The property panels of the tracks, curves and markers of one display. Each is made when it is first asked for and
/// goes with its item, also while a dock is its parent.
class ItemPanels : public QObject
{
    Q_OBJECT

public:
    explicit ItemPanels(QObject *parent = nullptr);
    ~ItemPanels() override;

    /// Null for an item that has no properties.
    QWidget *panelOf(QGraphicsItem *item);
    /// Null as long as nobody asked for the panel.
    QWidget *existingPanelOf(QGraphicsItem *item) const;

private:
    template<class Panel, class Item>
    QWidget *panel(Item *item);
    void forget(QObject *item);

    QHash<const QObject *, QPointer<QWidget>> m_panels;
};
