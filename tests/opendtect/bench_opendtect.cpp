// What the plug-in costs on OpendTect's own libraries, against those libraries and the bytes of the same files, in one run.
// Processor times, of which the least of the rounds counts: the machine may have other work.

#include "datastore/curvegrouptable.h"
#include "datastore/wellscatalogue.h"
#include "host/opendtect/opendtecthost.h"
#include "manywells.h"
#include "odprogram.h"
#include "odsurvey.h"
#include "plugin/lorvaosmgr.h"
#include "support/boxdriver.h"
#include "support/scriptedasker.h"

#include <QDirIterator>
#include <QMenu>

#include <cstdio>
#include <functional>
#include <limits>
#include <sys/resource.h>

#include <iodir.h>
#include <iodirentry.h>
#include <ioman.h>
#include <ioobj.h>
#include <uimainwin.h>
#include <uimenu.h>
#include <uistring.h>
#include <welldata.h>
#include <welllog.h>
#include <wellman.h>
#include <wellreader.h>
#include <welltransl.h>
#include <wellwriter.h>

namespace {

double processorSeconds()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double timed(const std::function<void()> &work)
{
    const double begin = processorSeconds();
    work();
    return processorSeconds() - begin;
}

double least(int rounds, const std::function<double()> &measured)
{
    double result = std::numeric_limits<double>::infinity();
    for (int i = 0; i < rounds; ++i)
        result = qMin(result, measured());
    return result;
}

MultiID idOf(const QString &key)
{
    return MultiID(key.toLatin1().constData());
}

void print(const char *what, double seconds, const char *reference, double referenceSeconds)
{
    std::printf("%-36s %8.3f s   %-44s %8.3f s   %6.2f\n", what, seconds, reference, referenceSeconds,
                seconds / referenceSeconds);
    std::fflush(stdout);
}

double readBytes(const QString &survey)
{
    return timed([&] {
        QDirIterator files(survey + QStringLiteral("/WellInfo"), QDir::Files | QDir::Hidden);
        while (files.hasNext()) {
            QFile file(files.next());
            if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) || file.readAll().size() != file.size())
                qFatal("Cannot read a file");
        }
    });
}

// The library's own loading of the same parts of each well, once, in the folder where it finds the wells at once.
double loadInHost(int wells)
{
    return timed([&] {
        IOM().to(WellTranslatorGroup::ioContext().getSelKey());
        TypeSet<MultiID> ids;
        Well::MGR().getWellKeys(ids);
        if (ids.size() != wells)
            qFatal("The survey is not complete");
        for (int i = 0; i < ids.size(); ++i) {
            Well::LoadReqs parts(Well::Inf, Well::Trck, Well::Mrkrs);
            Well::MGR().get(ids[i], parts.add(Well::LogInfos));
            Well::MGR().cleanup();
        }
    });
}

// The library's own reading of the same parts, without its manager: a new well for each, headers of logs only.
double readInHost(int wells)
{
    return timed([&] {
        const IOObjContext context = WellTranslatorGroup::ioContext();
        const IODir folder(context.getSelKey());
        const IODirEntryList entries(folder, context);
        if (entries.size() != wells)
            qFatal("The survey is not complete");
        for (int i = 0; i < entries.size(); ++i) {
            RefMan<Well::Data> well = new Well::Data;
            const Well::Reader reader(*entries[i]->ioobj_, *well);
            if (!reader.getInfo() || !reader.getTrack() || !reader.getLogs(true) || !reader.getMarkers())
                qFatal("A well cannot be read");
            Well::MGR().wells() += well.ptr(); // which deletes it
        }
    });
}

struct Launch
{
    explicit Launch(const QString &survey)
    {
        QDir(survey + QStringLiteral("/WLC")).removeRecursively();
        CurveGroupTable::instance().clear();
        IOM().to("0"); // where the host's window leaves it
        seconds = timed([this] { menu.getQMenu()->actions().last()->trigger(); });
        if (!manager.mainWindow() || !boxes.seen.isEmpty())
            qFatal("The plug-in was not launched");
    }

    BoxDriver boxes;
    uiMainWin window{nullptr, toUiString("Host"), 0, true};
    uiMenu menu{toUiString("Utilities")};
    opendtect::OpendTectHost host{&window, &menu};
    lorvaosMgr manager{host};
    double seconds = 0;
};

double launch(int wells)
{
    const odsurvey::SurveySize size{wells, 20, 500};
    const QString survey = odsurvey::openManyWells(QStringLiteral("Launch_%1").arg(wells), size);
    readBytes(survey);
    const double bytes = least(3, [&] { return readBytes(survey); });
    const double loading = least(3, [&] { return loadInHost(wells); });
    const double reading = least(3, [&] { return readInHost(wells); });
    const double seconds = least(3, [&] { return Launch(survey).seconds; });
    const double again = least(3, [&] {
        opendtect::OdWells store([](const QString &) {});
        ScriptedAsker asker;
        WellsCatalogue catalogue(store, asker, [](const QString &) { qFatal("A well cannot be read"); });
        return timed([&] { catalogue.build(); });
    });
    const QByteArray title = QByteArray::number(wells) + " wells: ";
    print((title + "first launch").constData(), seconds, "bytes of the same files", bytes);
    print((title + "first launch").constData(), seconds, "loading in the host's library", loading);
    print((title + "first launch").constData(), seconds, "the host's readers alone", reading);
    print((title + "catalogue").constData(), again, "bytes of the same files", bytes);
    print((title + "catalogue").constData(), again, "loading in the host's library", loading);
    print((title + "catalogue").constData(), again, "the host's readers alone", reading);
    print((title + "the host's readers alone").constData(), reading, "bytes of the same files", bytes);
    return seconds;
}

void display(int wells)
{
    opendtect::OdWells store([](const QString &) {});
    const QString key = store.list().value.at(wells / 2).key;
    const double ours = least(5, [&] {
        opendtect::OdWells fresh([](const QString &) {});
        (void)fresh.list();
        return timed([&] {
            for (int i = 0; i < 9; ++i)
                if (!fresh.header(key).ok() || !fresh.log(key, i).ok())
                    qFatal("A log cannot be read");
            (void)fresh.markers(key);
        });
    });
    const double theirs = least(5, [&] {
        IOM().to(WellTranslatorGroup::ioContext().getSelKey());
        const double seconds = timed([&] {
            RefMan<Well::Data> well =
                Well::MGR().get(idOf(key), Well::LoadReqs(Well::Inf, Well::Trck, Well::Mrkrs).add(Well::LogInfos));
            for (int i = 0; i < 9; ++i)
                if (!well->getLog(QByteArray("LOG" + QByteArray::number(i)).constData()))
                    qFatal("A log cannot be read");
        });
        Well::MGR().cleanup();
        return seconds;
    });
    print("nine logs and markers of a well", ours, "the host's library", theirs);
}

host::LogData curve(int number)
{
    host::LogData log{QStringLiteral("CURVE%1").arg(number), QStringLiteral("gAPI"), {}, {}};
    for (int i = 0; i < 2000; ++i) {
        log.depths.append(100 + 0.125f * static_cast<float>(i));
        log.values.append(static_cast<float>((i * 7 + number) % 150));
    }
    return log;
}

void import(int curves)
{
    int round = 0;
    const auto open = [&](const char *who) {
        odsurvey::openManyWells(QStringLiteral("Import_%1_%2_%3").arg(curves).arg(QLatin1String(who)).arg(++round),
                                {1, 0, 0});
        opendtect::OdWells store([](const QString &) {});
        return store.list().value.first().key;
    };
    const double ours = least(3, [&] {
        const QString key = open("ours");
        opendtect::OdWells store([](const QString &) {});
        return timed([&] {
            for (int i = 0; i < curves; ++i)
                if (!store.writeLog(key, curve(i)).ok())
                    qFatal("A log cannot be written");
            store.reload(key);
        });
    });
    const double theirs = least(3, [&] {
        const QString key = open("theirs");
        IOM().to(WellTranslatorGroup::ioContext().getSelKey());
        return timed([&] {
            RefMan<Well::Data> well = Well::MGR().get(idOf(key), Well::LoadReqs(Well::Inf, Well::Trck));
            const Well::Writer writer(idOf(key), *well);
            for (int i = 0; i < curves; ++i) {
                const host::LogData log = curve(i);
                Well::Log made(log.name.toUtf8().constData());
                for (int sample = 0; sample < log.depths.size(); ++sample)
                    made.addValue(log.depths.at(sample), log.values.at(sample));
                if (!writer.putLog(made))
                    qFatal("A log cannot be written");
            }
        });
    });
    print((QByteArray::number(curves) + " logs into one well").constData(), ours, "the host's putLog", theirs);
}

} // namespace

int main(int argc, char *argv[])
{
    testing_support::prepare();
    OdProgram program(argc, argv);
    const double thousand = launch(1000);
    display(1000);
    const double twoThousand = launch(2000);
    print("2,000 wells: first launch", twoThousand, "1,000 wells", thousand);
    import(100);
    import(327);
    return 0;
}
