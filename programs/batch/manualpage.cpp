#include "programs/batch/command.h"
#include "programs/batch/helptext.h"

namespace batch {

namespace {

/// Text as troff takes it: a backslash, a dash and a line that begins with a dot or a quote mean something to it.
QString escaped(QString text)
{
    text.replace(QLatin1Char('\\'), QStringLiteral("\\e"));
    text.replace(QLatin1Char('-'), QStringLiteral("\\-"));
    text.replace(QChar(QChar::Nbsp), QStringLiteral("\\ "));
    if (text.startsWith(QLatin1Char('.')) || text.startsWith(QLatin1Char('\'')))
        text.prepend(QStringLiteral("\\&"));
    return text;
}

QString paragraphs(const QString &text)
{
    QString page;
    for (const QString &paragraph : text.split(QStringLiteral("\n\n")))
        page += QStringLiteral(".PP\n") + escaped(paragraph) + QLatin1Char('\n');
    return page;
}

QString entry(const QString &name, const QString &help)
{
    return QStringLiteral(".TP\n.B %1\n%2\n").arg(escaped(name), escaped(help + QLatin1Char('.')));
}

QString fieldEntries(const QVector<Field> &fields, const QString &prefix)
{
    QString page;
    for (const Field &field : fields) {
        page += entry(prefix + field.key, field.help);
        page += fieldEntries(field.fields, prefix + field.key + QLatin1Char('.'));
    }
    return page;
}

bool isCommon(const Option &option)
{
    for (const char *name : {"--force", "--dry-run", "--jobs", "--survey", "--json", "--help"})
        if (option.name == QLatin1String(name))
            return true;
    return false;
}

QString commandSection(const Command &command)
{
    QString page = QStringLiteral(".SS \"%1\"\n").arg(escaped(usageOf(command))) + paragraphs(command.description);
    for (const Operand &operand : command.operands)
        page += entry(operand.name, operand.help);
    for (const Option &option : options(command))
        if (!isCommon(option))
            page += entry(shownOption(option), toldHelp(option));
    if (!command.form.key.isEmpty())
        page +=
            QStringLiteral(".PP\nFields of the records in \"%1\" with \\-\\-json:\n").arg(escaped(command.form.key))
            + fieldEntries(command.form.fields, {});
    return page
        + QStringLiteral(".PP\nExample:\n.PP\n.RS\n.nf\nlorva\\-batch %1\n.fi\n.RE\n").arg(escaped(command.example));
}

/// Each common option once, with its text of the first command that has it.
QString commonOptions(const QVector<Command> &commands)
{
    QString page;
    QStringList told;
    for (const Command &command : commands) {
        for (const Option &option : options(command)) {
            if (!isCommon(option) || told.contains(option.name))
                continue;
            told.append(option.name);
            page += entry(shownOption(option), toldHelp(option));
        }
    }
    return page;
}

} // namespace

QString manualPage(const QVector<Command> &commands)
{
    QString page = QStringLiteral(
        ".TH LORVA\\-BATCH 1 \"\" \"LORVA OS 0.0\" \"User Commands\"\n.nh\n.ad l\n"
        ".SH NAME\nlorva\\-batch \\- work on the wells of a survey without a window\n"
        ".SH SYNOPSIS\n.B lorva\\-batch\n.I COMMAND\n[\\fIoptions\\fR]\n"
        ".SH DESCRIPTION\nReads and writes the wells of a survey folder of the OpendTect geoscience platform, and "
        "the project of LORVA OS in it, as the windows do. All depths and elevations are in metres, whatever the "
        "unit of the survey; but las tells those of a file in the file's unit, and \\-\\-from and \\-\\-to of render "
        "and correlate are of the unit and depth type that are drawn. Nothing is asked: what a window would ask is "
        "refused, and the message names the option that says \"Yes\". In a list of names a comma that belongs to a "
        "name stands behind a backslash. Names between commas, files and wells that are given twice count once.\n");
    page += QStringLiteral(".SH OPTIONS OF MANY COMMANDS\n") + commonOptions(commands);
    page += QStringLiteral(".SH COMMANDS\n");
    for (const Command &command : commands)
        if (!command.isHidden)
            page += commandSection(command);
    return page
        + QStringLiteral(
               ".SH OUTPUT\nRecords go to the standard output, messages to the standard error. With \\-\\-json one "
               "object is printed: \"command\", \"survey\", the list of records under its key, \"notices\" and "
               "\"failures\" (sentences). Fields are never renamed; new ones may come.\n"
               ".SH EXIT STATUS\n.TP\n.B 0\nEverything was done.\n.TP\n.B 1\nSomething failed; the standard error "
               "names the file or the well.\n.TP\n.B 2\nThe command line is wrong; nothing was done.\n.PP\nA signal "
               "(Ctrl+C) ends the program behind what it is writing: every file is the old one or the new one.\n"
               ".SH SEE ALSO\n.BR lorva\\-workbench (1)\n");
}

} // namespace batch
