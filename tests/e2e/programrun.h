#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

/// What a program did that was run to its end without a display and with a home of its own.
struct ProgramRun
{
    bool hasEnded = false; ///< by itself, in time and without a crash
    int exitCode = -1;
    QString output;
    QString errors; ///< without what the offscreen platform itself complains of
};

inline QString withoutPlatformNoise(const QString &text)
{
    QString result;
    for (const QString &line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        if (!line.startsWith(QLatin1String("This plugin does not support"))
            && !line.startsWith(QLatin1String("QStandardPaths: ")))
            result += line + QLatin1Char('\n');
    return result;
}

inline ProgramRun runProgram(const QString &program, const QStringList &arguments, const QString &home)
{
    constexpr int patienceMs = 280000; // a little less than Qt Test has with a test function
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home);
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0")); // the platform leaks
    environment.insert(QStringLiteral("LORVA_TEST_LIST_ACTIONS"), QStringLiteral("1"));
    environment.remove(QStringLiteral("LORVA_PLUGIN_PATH"));
    environment.remove(QStringLiteral("LD_LIBRARY_PATH"));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    ProgramRun run;
    run.hasEnded = process.waitForFinished(patienceMs) && process.exitStatus() == QProcess::NormalExit;
    if (process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished();
    }
    run.exitCode = process.exitCode();
    run.output = QString::fromUtf8(process.readAllStandardOutput());
    run.errors = withoutPlatformNoise(QString::fromUtf8(process.readAllStandardError()));
    return run;
}
