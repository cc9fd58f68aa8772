#pragma once

#include "demo/demosurvey.h"
#include "support/files.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/// What one run of the batch tool came to.
struct BatchRun
{
    bool hasEnded = false; ///< by itself, in time and without a signal
    int exitCode = -1;
    QByteArray output;
    QString errors;

    QJsonObject json() const { return QJsonDocument::fromJson(output).object(); }
    QJsonArray list(const char *key) const { return json().value(QLatin1String(key)).toArray(); }
    QJsonObject record(const char *key, int index = 0) const { return list(key).at(index).toObject(); }
    QStringList lines() const { return QString::fromUtf8(output).split(QLatin1Char('\n'), Qt::SkipEmptyParts); }
};

/// Runs the built program as a user does. A platform with windows is asked for, so that it would be seen if one were opened.
inline BatchRun runBatch(const QStringList &arguments, const QString &folder = QDir::rootPath(),
                         const QMap<QString, QString> &environment = {})
{
    constexpr int patienceMs = 120000;
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("nothing"));
    variables.remove(QStringLiteral("DISPLAY"));
    for (auto variable = environment.begin(); variable != environment.end(); ++variable)
        variables.insert(variable.key(), variable.value());
    QProcess process;
    process.setProcessEnvironment(variables);
    process.setWorkingDirectory(folder);
    process.start(QStringLiteral(LORVA_BINARY_DIR "/bin/lorva-batch"), arguments);
    BatchRun run;
    run.hasEnded = process.waitForFinished(patienceMs) && process.exitStatus() == QProcess::NormalExit;
    if (process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished();
    }
    run.exitCode = process.exitCode();
    run.output = process.readAllStandardOutput();
    run.errors = QString::fromUtf8(process.readAllStandardError());
    return run;
}

/// A demo survey, made once, and copies of it that a test may change.
class BatchFixture
{
public:
    void make()
    {
        QCOMPARE(demo::makeDemoSurvey(m_root.filePath(QStringLiteral("original/Demo"))), QString());
        m_original = m_root.filePath(QStringLiteral("original/Demo"));
    }
    /// Nobody changes this one.
    QString original() const { return m_original; }
    QString importFile(const QString &name) const { return m_original + QStringLiteral("/Import/") + name; }
    QString newPath() { return m_root.filePath(QString::number(++m_copies)); }
    /// Without the folder "Import", which is large.
    QString copy()
    {
        const QString folder = newPath();
        files::copyFolder(m_original, folder + QStringLiteral("/Demo"));
        QDir(folder + QStringLiteral("/Demo/Import")).removeRecursively();
        return folder + QStringLiteral("/Demo");
    }

    /// A copy as it is before its first launch: without default logs.
    QString copyWithoutDefaults()
    {
        const QString survey = copy();
        const QDir defaults(survey + QStringLiteral("/WLC/DefaultLogs"));
        for (const QString &name : defaults.entryList(QDir::Files))
            QFile::remove(defaults.filePath(name));
        return survey;
    }

private:
    QTemporaryDir m_root;
    QString m_original;
    int m_copies = 0;
};

/// Fails the test unless the run ended by itself with this code.
#define VERIFY_EXIT(code, ...)                                                                                       \
    do {                                                                                                             \
        const BatchRun endedRun = __VA_ARGS__;                                                                       \
        QVERIFY2(endedRun.hasEnded, qPrintable(endedRun.errors));                                                    \
        QVERIFY2(endedRun.exitCode == (code),                                                                        \
                 qPrintable(QString::number(endedRun.exitCode) + ": " + endedRun.errors));                           \
    } while (false)
