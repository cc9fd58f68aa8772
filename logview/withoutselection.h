#pragma once

#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QList>

/// Takes the selection of a scene away as long as it lives: for pictures, which show no selection. The scene must
/// outlive it and keep its items meanwhile.
class WithoutSelection
{
public:
    explicit WithoutSelection(QGraphicsScene &scene)
        : m_selected(scene.selectedItems())
    {
        scene.clearSelection();
    }
    ~WithoutSelection()
    {
        for (QGraphicsItem *item : qAsConst(m_selected))
            item->setSelected(true);
    }
    WithoutSelection(const WithoutSelection &) = delete;
    WithoutSelection &operator=(const WithoutSelection &) = delete;

private:
    QList<QGraphicsItem *> m_selected;
};
