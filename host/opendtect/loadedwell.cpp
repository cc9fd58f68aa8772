#include "host/opendtect/loadedwell.h"

#include "host/opendtect/odtext.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <ioman.h>
#include <ioobj.h>
#include <wellio.h>
#include <welltransl.h>

namespace opendtect {

LoadedWell::LoadedWell(const QString &key, const Well::LoadReqs &parts)
    : m_id(key.toLatin1().constData())
{
    // The host takes any text as a key and looks for it in odd places.
    static const QRegularExpression plainKey(QStringLiteral("^[1-9][0-9]{0,8}\\.[1-9][0-9]{0,8}$"));
    PtrMan<IOObj> stored = plainKey.match(key).hasMatch() ? IOM().get(m_id) : nullptr;
    // A well that was removed meanwhile may still be in the host's memory.
    if (!stored || stored->group() != mTranslGroupName(Well)) {
        m_error = QStringLiteral("There is no well with the key \"%1\" in the survey.").arg(key);
        return;
    }
    m_name = toQString(stored->name().buf());
    m_wasLoaded = Well::MGR().isLoaded(m_id);
    m_data = Well::MGR().get(m_id, parts);
    if (!m_data)
        m_error = withReason(QStringLiteral("Cannot read the well %1").arg(m_name), toQString(Well::MGR().errMsg()));
}

LoadedWell::~LoadedWell()
{
    m_data = nullptr;
    if (m_wasLoaded)
        return;
    const ObjectSet<Well::Data> &wells = Well::MGR().wells();
    for (int i = 0; i < wells.size(); ++i) {
        const Well::Data *well = wells[i];
        if (well && well->multiID() == m_id && well->nrRefs() == 1) {
            // The manager's own reference: the well takes itself out of the manager before it goes.
            well->unRef();
            return;
        }
    }
}

QString LoadedWell::file(const char *ending, int number) const
{
    const QFileInfo main(toQString(Well::odIO::getMainFileName(m_id)));
    const QString stem = main.path() + QLatin1Char('/') + main.completeBaseName();
    return toQString(Well::odIO::mkFileName(stem.toUtf8().constData(), ending, number));
}

} // namespace opendtect
