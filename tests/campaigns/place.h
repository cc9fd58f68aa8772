#pragma once

#include "base/asker.h"
#include "datastore/projectdata.h"
#include "support/memoryhost.h"
#include "survey/surveystore.h"

#include <QMap>

/// What the campaigns work on: a survey with its project on disk, and beside it a folder of the user's.
namespace campaign {

/// A file without what tells when it was written: the date in the third line, those of the entries of a list, and in a PDF
/// file when it was made.
QByteArray withoutDates(const QByteArray &bytes);

/// Names below a folder to contents; two that tell the same are equal.
using Content = QMap<QString, QByteArray>;

/// What one has and the other has not, or has otherwise; separated by commas.
QString namesThatDiffer(const Content &a, const Content &b);
/// Whether each file is that of the one or of the other.
bool isMixed(const Content &now, const Content &one, const Content &other);

/// The host in memory with the wells of a survey on disk.
class DiskHost : public MemoryHost
{
public:
    host::Wells &wells() override { return store; }
    survey::SurveyStore store;
};

/// Says "Yes" to everything and keeps what was said.
class YesAsker : public base::Asker
{
public:
    base::BoxButton show(const base::Box &box) override;
    QStringList texts;
};

/// The place as a program sees it that was just started on it.
class Place
{
public:
    static constexpr char firstWell[] = "100050.2"; ///< "A", with the logs GR and RT and two markers
    static constexpr char secondWell[] = "100050.3"; ///< "B", which nothing changes

    /// Opens the survey in \a folder as the programs do, and with it what an earlier one left.
    explicit Place(const QString &folder);

    /// Makes the place, with its wells and a new project.
    static void make(const QString &folder);
    /// Makes a folder hold what another one holds.
    static void copy(const QString &from, const QString &to);
    /// All files but those that the programs hide for themselves; without the dates in the survey's files.
    static Content content(const QString &folder);
    /// Names that a program hides while it works, and that it ought to have taken away.
    static QStringList leftovers(const QString &folder);
    /// What a user sees of the survey's wells: names, headers, logs, markers, and what cannot be read.
    static QByteArray wellsAsSeen(const QString &folder);
    /// What a user sees after a start of the programs: the wells, and every other file.
    static Content asSeen(const QString &folder);

    QString survey() const { return m_folder + QStringLiteral("/survey"); }
    /// A file in the user's folder.
    QString file(const char *name) const { return m_folder + QStringLiteral("/out/") + QString::fromUtf8(name); }
    QString project() const { return data.project.projectFolder; }
    survey::SurveyStore &wells() { return host.store; }
    /// The text of everything that boxes said.
    QStringList said() const { return asker.texts + host.errors; }

private:
    QString m_folder;

public:
    DiskHost host;
    YesAsker asker;
    ProjectData data{host, asker};
};

} // namespace campaign
