#include "logview/markernames.h"

#include "logview/geometry/nameshifts.h"
#include "logview/markeritem.h"

#include <QTextDocument>

void MarkerNames::place(const QVector<MarkerItem *> &markers, const QFont &font)
{
    if (font != m_font)
        m_boxes.clear();
    m_font = font;
    QVector<logview::NameSpan> names;
    names.reserve(markers.size());
    QVector<bool> areCut;
    areCut.reserve(markers.size());
    for (const MarkerItem *marker : markers) {
        auto box = m_boxes.find(marker->markerName());
        if (box == m_boxes.end())
            box = m_boxes.insert(marker->markerName(), {marker->nameExtent(font), marker->isNameCut(font)});
        names.append({marker->y() + box->extent.top(), marker->y() + box->extent.bottom()});
        areCut.append(box->isCut);
    }
    const QVector<std::optional<double>> shifts = logview::nameShifts(names);
    for (int i = 0; i < markers.size(); ++i) {
        MarkerItem *marker = markers.at(i);
        marker->setNameShown(shifts.at(i).has_value());
        const bool isWhole = shifts.at(i) && !areCut.at(i);
        marker->setToolTip(isWhole ? QString() : Qt::convertFromPlainText(marker->markerName()));
        marker->setNameShift(shifts.at(i).value_or(0));
    }
}
