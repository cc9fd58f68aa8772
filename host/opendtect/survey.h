#pragma once

#include <QString>

#include <functional>

#include <callback.h>

namespace opendtect {

/// The host's current survey and the host's folders.
class Survey : public CallBacker
{
public:
    /// \a changed is called when the host has made another survey current and works normally again.
    explicit Survey(std::function<void()> changed);
    ~Survey() override;
    Survey(const Survey &) = delete;
    Survey &operator=(const Survey &) = delete;

    QString directory() const;
    QString name() const;
    QString setupDataFolder() const;
    QString documentationFolder() const;

private:
    void afterSurveyChange(CallBacker *);

    std::function<void()> m_changed;
};

} // namespace opendtect
