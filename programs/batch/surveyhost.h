#pragma once

#include "host/host.h"
#include "survey/surveystore.h"

#include <QStringList>

namespace batch {

/// The survey as the plug-in's parts see it: no window, no menu, no icons.
class SurveyHost : public host::Host
{
public:
    explicit SurveyHost(const QString &surveyDirectory);

    QString surveyDirectory() const override { return m_store.surveyDirectory(); }
    QString surveyName() const override;
    QString setupDataFolder() const override;
    QString documentationFolder() const override;
    QIcon icon(const QString &fileName) const override;
    void showError(const QString &text) override { m_errors.append(text); }
    QWidget *mainWidget() const override { return nullptr; }
    int appendAction(const host::MenuAction &action) override;
    void removeAction(int id) override;
    survey::SurveyStore &wells() override { return m_store; }
    void addListener(host::Listener *listener) override;
    void removeListener(host::Listener *listener) override;

    /// The texts of error boxes; forgotten then.
    QStringList takeErrors();

private:
    survey::SurveyStore m_store;
    QStringList m_errors;
};

} // namespace batch
