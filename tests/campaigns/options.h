#pragma once

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

namespace campaign {

/// What is asked of a campaign on its command line: --count, --seed, --only.
struct Options
{
    int count = 0;
    quint32 seed = 1;
    QByteArray only;

    Options(const char *description, const char *countOf, int shortCount)
        : count(shortCount)
    {
        QCommandLineParser parser;
        parser.setApplicationDescription(QString::fromUtf8(description));
        parser.addHelpOption();
        const QString number = QStringLiteral("number");
        const QCommandLineOption counted(QStringLiteral("count"), QString::fromUtf8(countOf), number,
                                         QString::number(shortCount));
        const QCommandLineOption seeded(QStringLiteral("seed"), QStringLiteral("Where chance begins."), number,
                                        QStringLiteral("1"));
        const QCommandLineOption one(QStringLiteral("only"), QStringLiteral("This one alone."),
                                     QStringLiteral("name"));
        parser.addOptions({counted, seeded, one});
        parser.process(*QCoreApplication::instance());
        count = parser.value(counted).toInt();
        seed = parser.value(seeded).toUInt();
        only = parser.value(one).toUtf8();
    }
};

/// Keeps the findings of a campaign and prints each when it is made.
class Findings
{
public:
    void add(const QString &where, const QString &what)
    {
        ++m_count;
        std::printf("FINDING %s: %s\n", qUtf8Printable(where), qUtf8Printable(what));
        std::fflush(stdout);
    }
    int count() const { return m_count; }

private:
    int m_count = 0;
};

} // namespace campaign
