#pragma once

#include <QSplitter>

QT_BEGIN_NAMESPACE
class QGraphicsScene;
QT_END_NAMESPACE

class PaperView;

/// The view of a header scene above that of its tracks. Both show the same columns, whatever is scrolled, and the
/// headers get the room they need.
class ViewPair : public QSplitter
{
    Q_OBJECT

public:
    /// Takes \a logView. Both scenes must outlive the pair.
    ViewPair(QGraphicsScene *headerScene, PaperView *logView, QWidget *parent = nullptr);

    PaperView *headerView() const { return m_headerView; }

    /// The headers get 200 pixels at most; without that what they need.
    void limitHeaders();

    /// No room left of the tracks for the names of markers.
    void leaveOutMarkerNames();

    /// Shows both scenes as they are now. The part of the tracks that is looked at stays in sight.
    void showScenes();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QRectF withMargin(const QRectF &sceneRect) const;
    void fitHeaderHeight();
    void shareHeight();

    PaperView *m_headerView;
    PaperView *m_logView;
    int m_highestHeaders = QWIDGETSIZE_MAX;
    int m_nameMargin;
};
