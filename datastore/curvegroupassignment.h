#pragma once

#include <QHash>
#include <QPair>
#include <QString>
#include <QVector>

/// The group of log names: the curve group table's, else the first group file in group order that lists the name,
/// else "Others". A table entry without a group counts as absent.
/// Group files are read when a name needs them, and once.
class CurveGroupFinder
{
public:
    explicit CurveGroupFinder(const QString &projectFolder);
    QString group(const QString &logName);

private:
    QString m_projectFolder;
    QHash<QString, QString> m_groupOfName; ///< the first one that lists it
    bool m_isRead = false;
};

/// The same for one name.
QString findCurveGroup(const QString &projectFolder, const QString &logName);

/// What a user assigns: the name goes into the group's file and the table maps it to the group, so that the next
/// default-logs pass keeps it. The group "None", which has no file, or an empty one changes nothing. Silent.
void assignCurveGroup(const QString &projectFolder, const QString &logName, const QString &group);

/// Several assignments at once: table and group files are read once and written once, by write().
class CurveGroupAssignments
{
public:
    explicit CurveGroupAssignments(const QString &projectFolder);
    void add(const QString &logName, const QString &group) { m_assignments.append({logName, group}); }
    void write();

private:
    QString m_projectFolder;
    QVector<QPair<QString, QString>> m_assignments; ///< log name and group
};
