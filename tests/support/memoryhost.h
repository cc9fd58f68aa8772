#pragma once

#include "host/host.h"

#include <QStringList>

/// A host in memory: its wells, every error and every action lie open to the test. As in every host, list() is
/// sorted by name whatever the order in which wells were added.
class MemoryHost : public host::Host, public host::Wells
{
public:
    struct Well
    {
        QString key;
        host::WellHeader header;
        QVector<host::LogData> logs;
        QVector<host::Marker> markers;
        QStringList hiddenMarkers; ///< stored, not given out, and lost when markers are written
        bool isUnreadable = false;
    };

    /// Adds a well with the next key and gives the key.
    QString addWell(const host::WellHeader &header);
    Well *find(const QString &key);
    void changeSurvey(const QString &directory);
    void announceClosing();
    /// Triggers the action as a click on it would.
    void trigger(int index = 0);

    QVector<Well> storedWells;
    QStringList errors;
    QVector<host::MenuAction> actions;
    QVector<host::Listener *> listeners;
    QString survey;
    QString dataFolder;
    QWidget *window = nullptr;
    bool listFails = false;
    bool markerWritesFail = false;
    QStringList reloaded;

    QString surveyDirectory() const override { return survey; }
    QString surveyName() const override;
    QString setupDataFolder() const override { return dataFolder; }
    QString documentationFolder() const override { return dataFolder + QStringLiteral("/doc"); }
    QIcon icon(const QString &fileName) const override;
    void showError(const QString &text) override { errors.append(text); }
    QWidget *mainWidget() const override { return window; }
    int appendAction(const host::MenuAction &action) override;
    void removeAction(int id) override;
    host::Wells &wells() override { return *this; }
    void addListener(host::Listener *listener) override;
    void removeListener(host::Listener *listener) override { listeners.removeAll(listener); }

    host::Outcome<QVector<host::WellEntry>> list() override;
    host::Outcome<host::WellHeader> header(const QString &key) override;
    host::Outcome<QVector<host::LogInfo>> logs(const QString &key) override;
    host::Outcome<host::LogData> log(const QString &key, int index) override;
    host::Outcome<QVector<host::Marker>> markers(const QString &key) override;
    host::Status writeLog(const QString &key, const host::LogData &log) override;
    host::Status writeMarkers(const QString &key, const QVector<host::Marker> &markers) override;
    host::Outcome<QStringList> markersLostByWriting(const QString &key,
                                                    const QVector<host::Marker> &markers) override;
    void reload(const QString &key) override { reloaded.append(key); }

private:
    Well *readable(const QString &key);
    template<class Call>
    void tell(const Call &call);

    QVector<int> m_actionIds; ///< parallel to actions
    int m_lastActionId = 0;
    int m_lastNumber = 1;
};
