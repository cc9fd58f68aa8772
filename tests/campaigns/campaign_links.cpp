// A link in the place of each file and folder of a survey and its project in turn, which leads out of the survey or
// nowhere: no save and no start of the programs opens, makes, changes or removes anything where it leads.
//
//     build/release/tests/campaign_links [--count LINKS] [--seed NUMBER]

#include "openedfiles.h"
#include "operations.h"
#include "options.h"
#include "support/files.h"
#include "support/testmain.h"

#include <QDir>
#include <QTemporaryDir>

#include <memory>
#include <random>

using namespace campaign;

namespace {

class Links
{
public:
    explicit Links(Findings *findings)
        : m_findings(findings)
        , m_root(QFileInfo(m_folder.path()).canonicalFilePath())
    {
        for (const std::vector<Operation> &some : {surveyOperations(), projectOperations()})
            for (const Operation &operation : some)
                if (!operation.isOneWay) // the campaign itself would touch what lies behind the link
                    m_operations.push_back(operation);
        Place::make(base());
        Place place(base());
        for (const Operation &operation : m_operations)
            (void)save(operation, place, 1); // so that all files are there
    }

    /// The files and folders of survey and project.
    QStringList places() const
    {
        QStringList names;
        for (const QString &name : Place::content(base() + QStringLiteral("/survey")).keys())
            names.append(name.endsWith(QLatin1Char('/')) ? name.chopped(1) : name);
        return names;
    }

    void run(const QString &name, bool leadsNowhere)
    {
        Place::copy(base(), work());
        QDir(outside()).removeRecursively();
        QDir().mkpath(outside());
        const QString there = work() + QStringLiteral("/survey/") + name;
        const QString target = outside() + QStringLiteral("/target");
        if (!QDir().rename(there, target) || !QFile::link(target, there))
            qFatal("no link in the place of %s", qUtf8Printable(name));
        if (leadsNowhere)
            QDir().rename(target, outside() + QStringLiteral("/elsewhere"));
        const Content before = files::snapshot(outside());
        std::unique_ptr<Place> place;
        watched(name, "the start", before, [&] {
            place = std::make_unique<Place>(work());
            (void)Place::wellsAsSeen(work());
        });
        for (const Operation &operation : m_operations)
            for (const int state : {0, 1})
                watched(name, operation.name, before, [&] { (void)save(operation, *place, state); });
    }

private:
    template<class Work>
    void watched(const QString &name, const char *what, const Content &before, const Work &work)
    {
        QByteArrayList paths;
        {
            const OpenedFiles opened(QFile::encodeName(outside()));
            work();
            paths = opened.paths();
        }
        const QString changed = namesThatDiffer(before, files::snapshot(outside()));
        if (!paths.isEmpty())
            m_findings->add(
                name,
                QStringLiteral("\"%1\" opens %2").arg(QString::fromUtf8(what), QFile::decodeName(paths.first())));
        if (!changed.isEmpty())
            m_findings->add(name, QStringLiteral("\"%1\" changes %2").arg(QString::fromUtf8(what), changed));
    }

    QString base() const { return m_root + QStringLiteral("/base"); }
    QString work() const { return m_root + QStringLiteral("/work"); }
    QString outside() const { return m_root + QStringLiteral("/outside"); }

    Findings *m_findings;
    QTemporaryDir m_folder;
    QString m_root;
    std::vector<Operation> m_operations;
};

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing_support::prepare();
    const QApplication application(argc, argv);
    const Options options("Links in the place of everything.", "How many links, drawn by chance; 0 for all.", 12);
    Findings findings;
    Links links(&findings);
    std::vector<std::pair<QString, bool>> cases;
    for (const QString &name : links.places())
        for (const bool leadsNowhere : {false, true})
            cases.emplace_back(name, leadsNowhere);
    std::printf("%d links in all\n", static_cast<int>(cases.size()));
    if (options.count > 0) {
        std::shuffle(cases.begin(), cases.end(), std::mt19937(options.seed));
        cases.resize(qMin(cases.size(), static_cast<size_t>(options.count)));
    }
    for (const auto &[name, leadsNowhere] : cases)
        links.run(name, leadsNowhere);
    std::printf("%d links, %d findings\n", static_cast<int>(cases.size()), findings.count());
    return findings.count() == 0 ? 0 : 1;
}
