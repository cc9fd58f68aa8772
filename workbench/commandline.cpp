#include "workbench/commandline.h"

namespace workbench {

namespace {

class Parser
{
public:
    explicit Parser(const QStringList &arguments)
        : m_rest(arguments)
    {
    }

    CommandLine parse();

private:
    void readOption(const QString &argument);
    void setOnce(QString *target, const QString &value, const QString &repeated);
    void refuse(const QString &error);

    QStringList m_rest;
    CommandLine m_line;
};

void Parser::refuse(const QString &error)
{
    m_line.action = CommandLine::Action::Refuse;
    m_line.error = error;
}

void Parser::setOnce(QString *target, const QString &value, const QString &repeated)
{
    if (target->isEmpty())
        *target = value;
    else
        refuse(repeated);
}

void Parser::readOption(const QString &argument)
{
    const int equals = argument.indexOf(QLatin1Char('='));
    const QString option = argument.left(equals);
    if (equals < 0 && option == QLatin1String("--help")) {
        m_line.action = CommandLine::Action::ShowHelp;
        return;
    }
    if (equals < 0 && option == QLatin1String("--version")) {
        m_line.action = CommandLine::Action::ShowVersion;
        return;
    }
    if (equals < 0 && option == QLatin1String("--tour")) {
        m_line.showsTour = true;
        return;
    }
    const bool isKnown = option == QLatin1String("--survey") || option == QLatin1String("--plugin-dir")
        || option == QLatin1String("--demo");
    if (!isKnown) {
        refuse(QStringLiteral("Unknown option \"%1\".").arg(argument));
        return;
    }
    QString value;
    if (equals >= 0)
        value = argument.mid(equals + 1);
    else if (!m_rest.isEmpty() && !m_rest.first().startsWith(QLatin1Char('-')))
        value = m_rest.takeFirst();
    if (value.isEmpty())
        refuse(QStringLiteral("The option %1 needs a folder.").arg(option));
    else if (option == QLatin1String("--plugin-dir"))
        m_line.pluginFolders.append(value);
    else if (option == QLatin1String("--survey"))
        setOnce(&m_line.surveyFolder, value, QStringLiteral("Only one survey can be given."));
    else
        setOnce(&m_line.demoFolder, value, QStringLiteral("The option --demo can be given once only."));
}

CommandLine Parser::parse()
{
    bool optionsEnded = false;
    while (!m_rest.isEmpty() && m_line.action == CommandLine::Action::Run) {
        const QString argument = m_rest.takeFirst();
        if (!optionsEnded && argument == QLatin1String("--"))
            optionsEnded = true;
        else if (!optionsEnded && argument.startsWith(QLatin1Char('-')))
            readOption(argument);
        else if (argument.isEmpty())
            refuse(QStringLiteral("An argument is empty."));
        else if (argument.endsWith(QLatin1String(".las"), Qt::CaseInsensitive))
            m_line.lasFiles.append(argument);
        else
            setOnce(&m_line.surveyFolder, argument, QStringLiteral("Only one survey can be given."));
    }
    if (m_line.action != CommandLine::Action::Run || m_line.demoFolder.isEmpty())
        return m_line;
    m_line.action = CommandLine::Action::MakeDemo;
    if (!m_line.surveyFolder.isEmpty() || !m_line.lasFiles.isEmpty() || m_line.showsTour)
        refuse(QStringLiteral("The option --demo makes a survey and cannot open one as well."));
    return m_line;
}

} // namespace

CommandLine parseCommandLine(const QStringList &arguments)
{
    return Parser(arguments).parse();
}

QString usageLine()
{
    return QStringLiteral("Usage: lorva-workbench [--survey DIR | DIR] [FILE.las]... [--tour] "
                          "[--plugin-dir DIR]... [--demo DIR] [--help] [--version]");
}

QString helpText()
{
    return usageLine()
        + QStringLiteral("\n\n"
                         "Opens a survey folder, manages its wells and runs plug-ins on it.\n\n"
                         "  --survey DIR      the survey to open; without it the last one is opened again\n"
                         "  FILE.las          propose new wells from these LAS files in that survey; with them alone, a\n"
                         "                    workbench that runs already does so\n"
                         "  --tour            show the first plug-in's window with a well and a correlation open\n"
                         "  --plugin-dir DIR  a further folder to load plug-ins from; may be repeated\n"
                         "  --demo DIR        make a demo survey in this folder and leave\n"
                         "  --help            show this text\n"
                         "  --version         show the version\n\n"
                         "The environment variable LORVA_PLUGIN_PATH names more plug-in folders, separated by "
                         "colons.");
}

QString versionText()
{
    return QStringLiteral("lorva-workbench 0.0");
}

} // namespace workbench
