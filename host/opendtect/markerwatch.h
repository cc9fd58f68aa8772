#pragma once

#include <QString>

#include <functional>

#include <callback.h>

namespace opendtect {

/// Tells which wells got other markers. The host announces that per well in its memory, and not that it loads one:
/// so attach() is called whenever a well may have come into memory.
class MarkerWatch : public CallBacker
{
public:
    explicit MarkerWatch(std::function<void(const QString &wellKey)> changed);
    ~MarkerWatch() override;
    MarkerWatch(const MarkerWatch &) = delete;
    MarkerWatch &operator=(const MarkerWatch &) = delete;

    /// Watches every well that the host has in memory now.
    void attach();
    /// The same news of a well that the host has not in memory.
    void tell(const QString &wellKey) const { m_changed(wellKey); }

private:
    void markersChanged(CallBacker *well);

    std::function<void(const QString &wellKey)> m_changed;
};

} // namespace opendtect
