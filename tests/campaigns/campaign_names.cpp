// Names that no program likes, in every use that stores and dialogs have for a name: nothing outside of the folder that is
// meant is made, changed or taken away, names that are not refused come back, and each finds what was stored under it.
//
//     build/release/tests/campaign_names [--count NAMES] [--seed NUMBER] [--only USE]

#include "nameuses.h"
#include "options.h"
#include "support/files.h"
#include "support/hostilenames.h"
#include "support/testmain.h"

#include <QTemporaryDir>

#include <algorithm>
#include <random>

using namespace campaign;

namespace {

QString shown(const QString &name)
{
    QString result;
    for (const QChar c : name.left(40))
        result += c.isPrint() && c.unicode() < 0x7F
            ? QString(c)
            : QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
    return QLatin1Char('"') + result + (name.size() > 40 ? QStringLiteral("…\"") : QStringLiteral("\""));
}

class NamesInOneUse
{
public:
    NamesInOneUse(const NameUse &use, Findings *findings)
        : m_use(use)
        , m_findings(findings)
    {
        Place::make(path());
        // What an escape would hit.
        for (const char *victim :
             {"x", "b", "passwd", "victim.well", "survey/x", "survey/b", "out/x", "survey/WLC/x.txt"})
            files::write(m_folder.filePath(QString::fromUtf8(victim)), "somebody's");
        for (const char *victim :
             {"x", "b", "survey/x", "survey/x.well", "survey/WLC/Templates/x", "survey/WLC/Correlations/x.txt"})
            files::write(path() + QLatin1Char('/') + QString::fromUtf8(victim), "somebody's");
    }

    void run(const QStringList &names)
    {
        int number = 0;
        for (const QString &name : names)
            store(name, ++number);
        checkAll();
        if (!m_use.remove)
            return;
        while (!m_stored.isEmpty())
            remove(m_stored.first());
    }

    int refused() const { return m_refused; }
    int checks() const { return m_checks; }

private:
    QString path() const { return m_folder.filePath(QStringLiteral("place")); }
    QString form(const QString &name) const { return m_use.form ? m_use.form(name) : name; }
    void find(const QString &name, const QString &what)
    {
        const QString where = QStringLiteral("%1 %2").arg(QString::fromUtf8(m_use.name), shown(name));
        if (!m_told.contains(where + what))
            m_findings->add(where, what);
        m_told.insert(where + what);
    }

    // Runs it as a program of its own would, and looks at all that changed.
    template<class Work>
    void watched(const QString &name, bool mayChange, const Work &work)
    {
        const Content before = everything();
        {
            Place place(path());
            mayChange = work(place) && mayChange;
        }
        const Content after = everything();
        const QString changed = namesThatDiffer(before, after);
        if (changed.isEmpty())
            return;
        if (!mayChange)
            find(name, QStringLiteral("refused or only read, and yet changed: %1").arg(changed));
        for (const QString &one : changed.split(QStringLiteral(", place/")))
            if (!isAllowed(one.startsWith(QLatin1String("place/")) ? one.mid(6) : one))
                find(name, QStringLiteral("changed %1").arg(one));
    }

    // Also what the programs hide. A file that is written as it was has another date.
    Content everything() const
    {
        Content all = files::snapshot(m_folder.path());
        for (QByteArray &bytes : all)
            bytes = withoutDates(bytes);
        return all;
    }

    bool isAllowed(const QString &changed) const
    {
        if (changed.startsWith(QLatin1String("settings/"))) // sizes of windows
            return true;
        if (m_use.remove && changed.startsWith(QLatin1String("survey/WLC/.lorva-deleted/")))
            return true;
        for (const QString &allowed : m_use.allowed)
            if (changed.startsWith(allowed))
                return true;
        return false;
    }

    void store(const QString &name, int number)
    {
        watched(name, true, [&](Place &place) {
            const QString refusal = m_use.store(place, name, number);
            ++m_checks;
            if (!refusal.isEmpty()) {
                ++m_refused;
                return false;
            }
            const auto isSame = [&](const QString &other) { return form(other) == form(name); };
            m_stored.erase(std::remove_if(m_stored.begin(), m_stored.end(), isSame), m_stored.end());
            m_stored.append(name);
            m_numbers.insert(form(name), number);
            checkFound(place, name);
            return true;
        });
    }

    void checkFound(Place &place, const QString &name)
    {
        const int found = m_use.find(place, name);
        const int expected = m_numbers.value(form(name));
        ++m_checks;
        if (found < 0)
            find(name, QStringLiteral("is lost"));
        else if (found != expected && found != 0) // 0: the use stores no number
            find(name, QStringLiteral("finds what is another's: %1, not %2").arg(found).arg(expected));
    }

    void remove(const QString &name)
    {
        watched(name, true, [&](Place &place) {
            ++m_checks;
            if (!m_use.remove(place, name))
                find(name, QStringLiteral("cannot be taken away"));
            if (m_use.find(place, name) >= 0)
                find(name, QStringLiteral("is still there"));
            return true;
        });
        m_stored.removeOne(name);
        m_numbers.remove(form(name));
        checkAll();
    }

    void checkAll()
    {
        watched(QString(), false, [&](Place &place) {
            for (const QString &name : qAsConst(m_stored))
                checkFound(place, name);
            return false;
        });
    }

    NameUse m_use;
    Findings *m_findings;
    QTemporaryDir m_folder;
    QStringList m_stored;
    QHash<QString, int> m_numbers; ///< the last one of each form
    QSet<QString> m_told;
    int m_refused = 0;
    int m_checks = 0;
};

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing_support::prepare();
    const QApplication application(argc, argv);
    const Options options("Hostile names in every use of a name.", "How many names, drawn by chance; 0 for all.", 15);
    Findings findings;
    QStringList names = hostileNames();
    if (options.count > 0) {
        std::shuffle(names.begin(), names.end(), std::mt19937(options.seed));
        names = names.mid(0, options.count);
    }
    int uses = 0;
    int checks = 0;
    for (const std::vector<NameUse> &some : {nameUses(), typedNameUses(), tableNameUses(), batchNameUses()})
        for (const NameUse &use : some) {
            if (!options.only.isEmpty() && options.only != use.name)
                continue;
            NamesInOneUse one(use, &findings);
            one.run(names);
            std::printf("%s: %d of %d names refused\n", use.name, one.refused(), names.size());
            ++uses;
            checks += one.checks();
        }
    std::printf("%d names, %d uses, %d checks, %d findings\n", names.size(), uses, checks, findings.count());
    return findings.count() == 0 ? 0 : 1;
}
