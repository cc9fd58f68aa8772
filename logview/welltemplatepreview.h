#pragma once

#include "logview/geometry/depthaxis.h"
#include "templates/templatepreview.h"

#include <memory>

QT_BEGIN_NAMESPACE
class QGraphicsScene;
QT_END_NAMESPACE

namespace base {
class NumberField;
}
class PaperView;
class TrackHeaders;
class TrackItem;
class ViewPair;
class WellDisplayData;
class WellNameItem;
struct ProjectData;

/// Draws a template with the logs of a well, over a window of its depths. Each log is read once. While it is out of
/// sight nothing is read or drawn. Of a track with hundreds of curves the first hundred are drawn.
class WellTemplatePreview : public TemplatePreview
{
    Q_OBJECT

public:
    /// \a projectData must outlive it.
    WellTemplatePreview(ProjectData &projectData, const QString &wellName, QWidget *parent = nullptr);
    ~WellTemplatePreview() override;

    void showTracks(const QVector<TrackInfo> &tracks, int current) override;

    /// The items of the tracks that are shown, from left to right.
    QVector<TrackItem *> tracks() const;
    /// How many such items were made so far.
    int builtTracks() const { return m_builtTracks; }
    const logview::DepthRange &window() const { return m_window; }

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Shown
    {
        TrackInfo definition;
        TrackItem *item = nullptr; ///< owned by the scene
    };

    bool isInSight() const;
    void refreshInSight();
    void refresh();
    TrackItem *takeEqual(const TrackInfo &definition);
    TrackItem *make(const TrackInfo &definition);
    void chooseWindow();
    void windowEdited();
    void layOut();

    ProjectData &m_data;
    QString m_wellName;
    std::shared_ptr<WellDisplayData> m_well; ///< null until something is shown
    std::unique_ptr<QGraphicsScene> m_headerScene; ///< outlives the tracks' scene
    std::unique_ptr<QGraphicsScene> m_scene;
    std::unique_ptr<TrackHeaders> m_headers;
    WellNameItem *m_banner = nullptr; ///< in the header scene
    PaperView *m_view;
    ViewPair *m_views;
    base::NumberField *m_from;
    base::NumberField *m_to;
    QVector<TrackInfo> m_wanted;
    QVector<Shown> m_shown;
    int m_current = 0;
    int m_builtTracks = 0;
    bool m_isUpToDate = false; ///< what is drawn is what is wanted
    logview::DepthRange m_window;
    bool m_hasWindow = false;
};
