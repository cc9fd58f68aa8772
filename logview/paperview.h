#pragma once

#include <QGraphicsView>

/// A view that is paper to its scene: white whatever the palette, and what it shows after scrolling is what it would
/// paint anew, also on screens with a broken device pixel ratio.
class PaperView : public QGraphicsView
{
    Q_OBJECT

public:
    /// The scene must outlive the view.
    explicit PaperView(QGraphicsScene *scene, QWidget *parent = nullptr);

    /// What can be scrolled to. The left end stays in sight until the user scrolls it away.
    void showRect(const QRectF &sceneRect);

protected:
    bool viewportEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    template<class Change>
    void keepingTheLeftEnd(const Change &change);
};
