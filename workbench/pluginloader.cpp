#include "workbench/pluginloader.h"

#include "workbench/plugininforecord.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <cstdio>
#include <exception>

namespace workbench {

namespace {

using InfoFunction = const PluginInfoRecord *(*)();
using InitFunction = const char *(*)(int, char **);

void fillInfo(const PluginInfoRecord &info, PluginReport *report)
{
    report->displayName = QString::fromUtf8(info.displayName);
    report->productName = QString::fromUtf8(info.productName);
    report->creator = QString::fromUtf8(info.creator);
    report->version = QString::fromUtf8(info.version);
    report->text = QString::fromUtf8(info.text);
    report->license = info.license;
}

// Calls both entry points. Returns why the plug-in does not run, or nothing. hasRun tells that code of it was called.
QString start(QLibrary *library, const QString &name, PluginReport *report, bool *hasRun)
{
    // All symbols at once: one that is missing fails here, not in the middle of a user's work.
    library->setLoadHints(QLibrary::ResolveAllSymbolsHint);
    if (!library->load())
        return QStringLiteral("It does not load: %1.").arg(library->errorString());
    const QByteArray infoName = "Get" + name.toUtf8() + "PluginInfo";
    const QByteArray initName = "Init" + name.toUtf8() + "Plugin";
    const auto info = reinterpret_cast<InfoFunction>(library->resolve(infoName.constData()));
    const auto init = reinterpret_cast<InitFunction>(library->resolve(initName.constData()));
    if (!info || !init)
        return QStringLiteral("It does not export \"%1\".").arg(QString::fromUtf8(info ? initName : infoName));
    *hasRun = true;
    try {
        const PluginInfoRecord *record = info();
        if (!record)
            return QStringLiteral("\"%1\" returns no record.").arg(QString::fromUtf8(infoName));
        fillInfo(*record, report);
        static char programName[] = "lorva-workbench";
        static char *arguments[] = {programName, nullptr};
        if (const char *failure = init(1, arguments))
            return QStringLiteral("It could not start: %1").arg(QString::fromUtf8(failure));
    } catch (const std::exception &exception) {
        return QStringLiteral("It threw an exception while it started: %1")
            .arg(QString::fromLocal8Bit(exception.what()));
    } catch (...) {
        return QStringLiteral("It threw an exception while it started.");
    }
    return {};
}

} // namespace

PluginLoader::~PluginLoader()
{
    while (!m_libraries.empty()) {
        m_libraries.back()->unload();
        m_libraries.pop_back();
    }
}

QStringList PluginLoader::searchFolders(const QStringList &given)
{
    QStringList folders = given;
    const QString environment = QFile::decodeName(qgetenv("LORVA_PLUGIN_PATH"));
    for (const QString &folder : environment.split(QLatin1Char(':'), Qt::SkipEmptyParts))
        folders.append(folder);
    const QDir programs(QCoreApplication::applicationDirPath());
    folders.append(QDir::cleanPath(programs.absoluteFilePath(QStringLiteral("../lib/lorva/plugins"))));
    return folders;
}

QString PluginLoader::pluginName(const QString &fileName)
{
    QString name = fileName.left(fileName.indexOf(QLatin1Char('.')));
    if (name.startsWith(QLatin1String("lib")))
        name.remove(0, 3);
    return name;
}

void PluginLoader::loadAll(const QStringList &folders)
{
    for (const QString &folder : folders) {
        const QDir dir(folder);
        for (const QString &file : dir.entryList({QStringLiteral("lib*.so")}, QDir::Files, QDir::Name)) {
            if (m_fileNames.contains(file))
                continue;
            m_fileNames.append(file);
            load(dir.absoluteFilePath(file));
        }
    }
}

void PluginLoader::load(const QString &path)
{
    PluginReport report;
    report.file = path;
    report.name = pluginName(QFileInfo(path).fileName());
    auto library = std::make_unique<QLibrary>(path);
    bool hasRun = false;
    report.error = start(library.get(), report.name, &report, &hasRun);
    // A plug-in that failed half-way may have left something with Qt that still calls it: it stays in memory.
    if (hasRun)
        m_libraries.push_back(std::move(library));
    else
        library->unload();
    if (!report.error.isEmpty()) {
        std::fprintf(stderr, "lorva-workbench: the plug-in %s was left out. %s\n", qUtf8Printable(path),
                     qUtf8Printable(report.error));
    }
    m_reports.append(report);
}

} // namespace workbench
