#pragma once

#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QList>

/// Takes the selection of a scene away as long as it lives: for pictures, which show no selection. The scene must
/// outlive it; items may go meanwhile.
class WithoutSelection
{
public:
    explicit WithoutSelection(QGraphicsScene &scene)
        : m_scene(scene)
        , m_selected(scene.selectedItems())
    {
        scene.clearSelection();
    }
    ~WithoutSelection()
    {
        const QList<QGraphicsItem *> items = m_selected.isEmpty() ? m_selected : m_scene.items();
        for (QGraphicsItem *item : qAsConst(m_selected))
            if (items.contains(item))
                item->setSelected(true);
    }
    WithoutSelection(const WithoutSelection &) = delete;
    WithoutSelection &operator=(const WithoutSelection &) = delete;

private:
    QGraphicsScene &m_scene;
    QList<QGraphicsItem *> m_selected;
};
