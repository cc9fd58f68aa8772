#pragma once

#include <QLibrary>
#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>
#include <vector>

namespace workbench {

/// What became of one plug-in library.
struct PluginReport
{
    QString file;
    QString name; ///< the NAME of "libNAME.so"
    QString displayName; ///< the texts of its info record
    QString productName;
    QString creator;
    QString version;
    QString text;
    int license = 0;
    QString error; ///< why it does not run, as a sentence; empty when it does
};

/// Loads plug-ins as the host does: every "libNAME.so" of the given folders, its "GetNAMEPluginInfo" and then its
/// "InitNAMEPlugin" called once. A failing plug-in is reported and left out. Unloads them when it is destroyed.
class PluginLoader
{
public:
    PluginLoader() = default;
    ~PluginLoader();
    PluginLoader(const PluginLoader &) = delete;
    PluginLoader &operator=(const PluginLoader &) = delete;

    /// The folders to look into: those given, then those of the environment variable LORVA_PLUGIN_PATH (separated
    /// by ":"), then the installed one.
    static QStringList searchFolders(const QStringList &given);
    /// The NAME of a library's file name: without "lib" and without everything from the first dot.
    static QString pluginName(const QString &fileName);

    /// A library whose file name was met already is not loaded again from a later folder.
    void loadAll(const QStringList &folders);
    const QVector<PluginReport> &reports() const { return m_reports; }

private:
    void load(const QString &path);

    QVector<PluginReport> m_reports;
    QStringList m_fileNames;
    std::vector<std::unique_ptr<QLibrary>> m_libraries;
};

} // namespace workbench
