#include "logview/markernames.h"

#include "logview/geometry/nameshifts.h"
#include "logview/markeritem.h"

#include <QTextDocument>

void MarkerNames::place(const QVector<MarkerItem *> &markers, const QFont &font)
{
    if (font != m_font)
        m_extents.clear();
    m_font = font;
    QVector<logview::NameSpan> names;
    names.reserve(markers.size());
    for (const MarkerItem *marker : markers) {
        auto extent = m_extents.find(marker->markerName());
        if (extent == m_extents.end())
            extent = m_extents.insert(marker->markerName(), marker->nameExtent(font));
        names.append({marker->y() + extent->top(), marker->y() + extent->bottom()});
    }
    const QVector<std::optional<double>> shifts = logview::nameShifts(names);
    for (int i = 0; i < markers.size(); ++i) {
        MarkerItem *marker = markers.at(i);
        marker->setNameShown(shifts.at(i).has_value());
        marker->setToolTip(shifts.at(i) ? QString() : Qt::convertFromPlainText(marker->markerName()));
        marker->setNameShift(shifts.at(i).value_or(0));
    }
}
