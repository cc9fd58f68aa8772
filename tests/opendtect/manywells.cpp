#include "manywells.h"

#include "odsurvey.h"
#include "support/alikewells.h"

#include <QFile>

#include <fcntl.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <ioman.h>
#include <multiid.h>

namespace odsurvey {

namespace {

Well firstWell(const SurveySize &size)
{
    Well well;
    well.header.name = QStringLiteral("Well_0");
    well.header.x = 1000;
    well.header.y = 2000;
    well.track = {{1000, 2000, -25, 0}, {1000, 2000, 4975, 5000}};
    for (int i = 0; i < 10; ++i)
        well.markers.append({QStringLiteral("Top %1").arg(i), 100.0f * static_cast<float>(i + 1), Qt::red});
    for (int i = 0; i < size.logs; ++i) {
        host::LogData log{QStringLiteral("LOG%1").arg(i), QStringLiteral("gAPI"), {}, {}};
        for (int sample = 0; sample < size.samples; ++sample) {
            log.depths.append(100 + 0.125f * static_cast<float>(sample));
            log.values.append(static_cast<float>(sample % 150));
        }
        well.logs.append(log);
    }
    return well;
}

} // namespace

QString openManyWells(const QString &name, const SurveySize &size)
{
    const QString survey = open(name);
    add(firstWell(size));
    testing_support::addAlikeWells(survey, QStringLiteral("Well_0"), QStringLiteral("Well_"), size.wells);
    makeCurrent(name);
    return survey;
}

OpenedFiles::OpenedFiles(const QString &folder)
    : m_watch(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    if (::inotify_add_watch(m_watch, QFile::encodeName(folder).constData(), IN_OPEN) < 0)
        qFatal("The test cannot watch a folder");
}

OpenedFiles::~OpenedFiles()
{
    ::close(m_watch);
}

int OpenedFiles::take(const QString &ending)
{
    alignas(inotify_event) char buffer[65536];
    int count = 0;
    for (ssize_t size = 0; (size = ::read(m_watch, buffer, sizeof buffer)) > 0;) {
        for (const char *at = buffer; at < buffer + size;) {
            const auto *event = reinterpret_cast<const inotify_event *>(at);
            if (event->mask & IN_Q_OVERFLOW)
                qFatal("More files were opened than can be counted");
            if (event->len > 0 && QFile::decodeName(event->name).endsWith(ending))
                ++count;
            at += sizeof(inotify_event) + event->len;
        }
    }
    return count;
}

} // namespace odsurvey
