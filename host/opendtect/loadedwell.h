#pragma once

#include <QString>

#include <multiid.h>
#include <ptrman.h>
#include <welldata.h>
#include <wellman.h>

namespace opendtect {

/// A well in the host's memory for as long as this object lives. What the host had loaded stays loaded; anything
/// else is let go at the end.
class LoadedWell
{
public:
    LoadedWell(const QString &key, const Well::LoadReqs &parts);
    ~LoadedWell();
    LoadedWell(const LoadedWell &) = delete;
    LoadedWell &operator=(const LoadedWell &) = delete;

    /// Why there is no well, as a sentence; empty when there is one.
    const QString &error() const { return m_error; }
    const MultiID &id() const { return m_id; }
    const QString &name() const { return m_name; }
    Well::Data &data() { return *m_data; }
    /// The path of one of the well's files, as the host names it.
    QString file(const char *ending, int number = 0) const;

private:
    MultiID m_id;
    QString m_name;
    QString m_error;
    bool m_wasLoaded = false;
    RefMan<Well::Data> m_data;
};

} // namespace opendtect
