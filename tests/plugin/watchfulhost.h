#pragma once

#include "support/memoryhost.h"

#include <functional>

/// A host in memory that calls the test back when the plug-in comes to read.
class WatchfulHost : public MemoryHost
{
public:
    std::function<void()> onList;
    std::function<void(const QString &key)> onMarkers;
    std::function<void()> onLogs;
    std::function<void()> onError;

    void showError(const QString &text) override
    {
        MemoryHost::showError(text);
        if (onError)
            onError();
    }

    host::Outcome<QVector<host::WellEntry>> list() override
    {
        if (onList)
            onList();
        return MemoryHost::list();
    }
    host::Outcome<QVector<host::LogInfo>> logs(const QString &key) override
    {
        if (onLogs)
            onLogs();
        return MemoryHost::logs(key);
    }
    host::Outcome<QVector<host::Marker>> markers(const QString &key) override
    {
        if (onMarkers)
            onMarkers(key);
        return MemoryHost::markers(key);
    }
};
