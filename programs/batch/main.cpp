// lorva-batch: works on survey folders without a window.

#include "programs/batch/command.h"
#include "programs/batch/output.h"
#include "programs/batch/run.h"
#include "programs/decodedarguments.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QTextCodec>

#include <clocale>
#include <cstring>
#include <langinfo.h>

namespace {

// Names on the command line are in the user's encoding. Where the environment names none, as in a timed job, names are
// what they are everywhere else.
void chooseEncoding()
{
    std::setlocale(LC_ALL, "");
    if (std::strcmp(nl_langinfo(CODESET), "ANSI_X3.4-1968") == 0)
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

} // namespace

int main(int argc, char *argv[])
{
    batch::prepareStreams();
    chooseEncoding();
    const batch::CommandLine line =
        batch::parseCommandLine(programs::decodedArguments(argc, argv), batch::commands());
    int onlyTheName = 1; // Qt has options of its own, and they could open a window
    if (!line.command || !line.command->drawsPictures) {
        const QCoreApplication application(onlyTheName, argv);
        return batch::run(line);
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QLoggingCategory::setFilterRules(
        QStringLiteral("default.warning=false")); // what Qt misses of a desktop is no news
    const QApplication application(onlyTheName, argv);
    return batch::run(line);
}
