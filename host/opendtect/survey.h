#pragma once

#include <QString>

#include <functional>

#include <callback.h>

namespace opendtect {

/// The host's current survey and the host's folders, and the news of both.
class Survey : public CallBacker
{
public:
    /// \a changed is called when the host has made another survey current and works normally again, \a closing when
    /// the host ends.
    Survey(std::function<void()> changed, std::function<void()> closing);
    ~Survey() override;
    Survey(const Survey &) = delete;
    Survey &operator=(const Survey &) = delete;

    QString directory() const;
    QString name() const;
    QString setupDataFolder() const;
    QString documentationFolder() const;

private:
    void afterSurveyChange(CallBacker *);
    void applicationClosing(CallBacker *);

    std::function<void()> m_changed;
    std::function<void()> m_closing;
};

} // namespace opendtect
