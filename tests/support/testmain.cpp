#include "support/testmain.h"

#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace testing_support {

namespace {

QtMessageHandler previousHandler = nullptr;

bool isPlatformNoise(const QString &text)
{
    return text.startsWith(QLatin1String("This plugin does not support"))
        || text.startsWith(QLatin1String("QStandardPaths: "));
}

void handleMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtWarningMsg && isPlatformNoise(text))
        return;
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        std::fprintf(stderr, "Unexpected warning: %s\n", qUtf8Printable(text));
        std::fflush(stderr);
        std::abort();
    }
    if (previousHandler)
        previousHandler(type, context, text);
}

} // namespace

void prepare()
{
    QStandardPaths::setTestModeEnabled(true);
    // Each program begins with no settings, also beside others.
    static const QTemporaryDir settings;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

void failOnWarnings()
{
    previousHandler = qInstallMessageHandler(handleMessage);
}

} // namespace testing_support
