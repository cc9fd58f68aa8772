#include "programs/batch/helptext.h"

#include "programs/batch/command.h"

namespace batch {

namespace {

constexpr int lineWidth = 100;
constexpr int helpColumn = 26;

QString shownOperand(const Operand &operand)
{
    const QString name = operand.isRepeatable ? operand.name + QStringLiteral("...") : operand.name;
    return operand.isOptional ? QLatin1Char('[') + name + QLatin1Char(']') : name;
}

QString entry(const QString &name, const QString &help)
{
    const QString head = QStringLiteral("  ") + name;
    const QString text = wrapped(help, helpColumn);
    if (head.size() > helpColumn - 2)
        return head + QLatin1Char('\n') + text;
    return head + text.mid(head.size());
}

QString fieldEntries(const QVector<Field> &fields, const QString &prefix)
{
    QString text;
    for (const Field &field : fields) {
        text += entry(prefix + field.key, field.help);
        if (field.kind == Field::Kind::Records)
            text += fieldEntries(field.fields, prefix + field.key + QLatin1Char('.'));
    }
    return text;
}

QString commandEntries(const QVector<Command> &commands, const QString &family)
{
    QString text;
    for (const Command &command : commands)
        if (!command.isHidden && (family.isEmpty() || command.name.startsWith(family + QLatin1Char(' '))))
            text += entry(command.name, command.summary);
    return text;
}

} // namespace

QString wrapped(const QString &text, int indent)
{
    QString result;
    for (const QString &paragraph : text.split(QLatin1Char('\n'))) {
        QString line(indent, QLatin1Char(' '));
        bool isEmpty = true;
        for (const QString &word : paragraph.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            if (!isEmpty && line.size() + 1 + word.size() > lineWidth) {
                result += line + QLatin1Char('\n');
                line = QString(indent, QLatin1Char(' '));
                isEmpty = true;
            }
            line += isEmpty ? word : QLatin1Char(' ') + word;
            isEmpty = false;
        }
        result += isEmpty ? QStringLiteral("\n") : line + QLatin1Char('\n');
    }
    return result;
}

QString shownOption(const Option &option)
{
    return option.value.isEmpty() ? option.name : option.name + QLatin1Char(' ') + option.value;
}

QString toldHelp(const Option &option)
{
    const bool isNumber = option.rule.kind == WordKind::Number || option.rule.kind == WordKind::Count;
    return isNumber ? QStringLiteral("%1 (%2)").arg(option.help, numberText(option.rule)) : option.help;
}

QString usageOf(const Command &command)
{
    QString usage = command.name;
    for (const Operand &operand : command.operands)
        usage += QLatin1Char(' ') + shownOperand(operand);
    for (const Option &option : options(command)) {
        if (option.name == QLatin1String("--help"))
            continue;
        const QString repeated = option.isRepeatable ? QStringLiteral("...") : QString();
        const QString shown = shownOption(option).replace(QLatin1Char(' '), QChar(QChar::Nbsp));
        usage +=
            QLatin1Char(' ') + (option.isRequired ? shown : QLatin1Char('[') + shown + QLatin1Char(']') + repeated);
    }
    return usage;
}

QString helpOf(const Command &command)
{
    QString text = QStringLiteral("Usage:\n") + wrapped(QStringLiteral("lorva-batch ") + usageOf(command), 2);
    text.replace(QChar(QChar::Nbsp), QLatin1Char(' '));
    text += QLatin1Char('\n') + wrapped(command.description, 0);
    if (!command.operands.isEmpty())
        text += QLatin1Char('\n');
    for (const Operand &operand : command.operands)
        text += entry(operand.name, operand.help);
    text += QStringLiteral("\nOptions:\n");
    for (const Option &option : options(command))
        text += entry(shownOption(option), toldHelp(option));
    if (!command.form.key.isEmpty())
        text += QStringLiteral("\nFields of the records in \"%1\" with --json:\n").arg(command.form.key)
            + fieldEntries(command.form.fields, {});
    return text + QStringLiteral("\nExample:\n  lorva-batch %1\n").arg(command.example);
}

QString helpOfAll(const QVector<Command> &commands, const QString &family)
{
    const QString word = family.isEmpty() ? QStringLiteral("COMMAND") : family + QStringLiteral(" COMMAND");
    return QStringLiteral("Usage:\n  lorva-batch %1 [options]\n\n"
                          "Works on the wells of a survey folder without a window.\n\nCommands:\n")
               .arg(word)
        + commandEntries(commands, family)
        + QStringLiteral("\n\"lorva-batch COMMAND --help\" tells more of a command, \"lorva-batch --version\" the "
                         "version.\nThe program ends with 0, with 1 when something failed, with 2 when the command "
                         "line is wrong.\n");
}

QString programVersion()
{
    return QStringLiteral("lorva-batch 0.0\n");
}

} // namespace batch
