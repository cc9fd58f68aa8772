#pragma once

#include "base/asker.h"
#include "host/host.h"

/// The host's wells as one launch sees them: as they are, until the launch has ended; then every call is an error, so
/// that nothing of it reaches the wells of another survey.
class GuardedWells : public host::Wells
{
public:
    explicit GuardedWells(host::Wells &wells)
        : m_wells(wells)
    {
    }
    void end() { m_hasEnded = true; }

    host::Outcome<QVector<host::WellEntry>> list() override;
    host::Outcome<host::WellHeader> header(const QString &key) override;
    host::Outcome<QVector<host::LogInfo>> logs(const QString &key) override;
    host::Outcome<host::LogData> log(const QString &key, int index) override;
    host::Outcome<QVector<host::Marker>> markers(const QString &key) override;
    host::Status writeLog(const QString &key, const host::LogData &log) override;
    host::Status writeMarkers(const QString &key, const QVector<host::Marker> &markers) override;
    host::Outcome<QStringList> markersLostByWriting(const QString &key,
                                                    const QVector<host::Marker> &markers) override;
    void reload(const QString &key) override;

private:
    template<class Call>
    auto called(const Call &call) -> decltype(call());

    host::Wells &m_wells;
    bool m_hasEnded = false;
};

/// The host as one launch sees it. A launch may end while code of it is still to return: what is left of that code
/// then gets errors for wells, and no box of it is shown.
class GuardedHost : public host::Host
{
public:
    /// \a host must outlive it.
    explicit GuardedHost(host::Host &host)
        : m_host(host)
        , m_wells(host.wells())
    {
    }
    void end();
    bool hasEnded() const { return m_hasEnded; }

    QString surveyDirectory() const override { return m_host.surveyDirectory(); }
    QString surveyName() const override { return m_host.surveyName(); }
    QString setupDataFolder() const override { return m_host.setupDataFolder(); }
    QString documentationFolder() const override { return m_host.documentationFolder(); }
    QIcon icon(const QString &fileName) const override { return m_host.icon(fileName); }
    void showError(const QString &text) override;
    QWidget *mainWidget() const override { return m_host.mainWidget(); }
    int appendAction(const host::MenuAction &action) override { return m_host.appendAction(action); }
    int appendWellsAction(const host::MenuAction &action) override { return m_host.appendWellsAction(action); }
    void removeAction(int id) override { m_host.removeAction(id); }
    host::Wells &wells() override { return m_wells; }
    void addListener(host::Listener *listener) override { m_host.addListener(listener); }
    void removeListener(host::Listener *listener) override { m_host.removeListener(listener); }

private:
    host::Host &m_host;
    GuardedWells m_wells;
    bool m_hasEnded = false;
};

/// The user as one launch asks: when the launch has ended nothing is shown, and the answer is that of a box closed
/// without a button.
class GuardedAsker : public base::Asker
{
public:
    /// Both must outlive it.
    GuardedAsker(base::Asker &asker, const GuardedHost &host)
        : m_asker(asker)
        , m_host(host)
    {
    }
    base::BoxButton show(const base::Box &box) override;

private:
    base::Asker &m_asker;
    const GuardedHost &m_host;
};
