#include "programs/batch/arguments.h"

#include "base/numbers.h"
#include "programs/batch/command.h"

#include <algorithm>
#include <cmath>

namespace batch {

namespace {

bool isOption(const QString &word)
{
    return word.startsWith(QLatin1String("--"));
}

QString optionName(const QString &word)
{
    return word.section(QLatin1Char('='), 0, 0);
}

/// The names of a list. A comma behind a backslash belongs to a name.
QStringList namesOf(const QString &list)
{
    QStringList names{QString()};
    for (int i = 0; i < list.size(); ++i) {
        if (list.at(i) == QLatin1Char(','))
            names.append(QString());
        else if (list.midRef(i).startsWith(QLatin1String("\\,")))
            names.last() += list.at(++i);
        else
            names.last() += list.at(i);
    }
    return names;
}

/// A word as the command sees it: a choice as the tables write it, however it is typed.
QString asWritten(const WordRule &rule, const QString &word)
{
    return rule.kind == WordKind::Choice ? asListed(rule.choices, word) : word;
}

/// Why a word is not what its rule asks for; empty when it is. \a what names the option or operand.
QString wordProblem(const WordRule &rule, const QString &word, const QString &what)
{
    if (word.isEmpty())
        return QStringLiteral("%1 is empty.").arg(what);
    if (word.contains(QChar::Null))
        return QStringLiteral("%1 holds a character that no name has.").arg(what);
    if (rule.kind == WordKind::Choice)
        return rule.choices.contains(word)
            ? QString()
            : QStringLiteral("%1 is one of %2, not \"%3\".").arg(what, rule.choices.join(QStringLiteral(", ")), word);
    if (rule.kind != WordKind::Number && rule.kind != WordKind::Count)
        return {};
    const std::optional<double> number = base::parseNumber(word.toUtf8());
    const bool isRight = number && *number >= rule.lowest && *number <= rule.highest
        && (rule.kind == WordKind::Number || base::parseInteger(word.toUtf8()));
    return isRight ? QString() : QStringLiteral("%1 is %2, not \"%3\".").arg(what, numberText(rule), word);
}

/// Reads the words behind the name of one command.
class Reader
{
public:
    Reader(const Command &command, const QStringList &words)
        : m_command(command)
        , m_options(options(command))
        , m_rest(words)
    {
    }

    CommandLine read();

private:
    void refuse(const QString &error)
    {
        if (m_line.action != CommandLine::Action::Run)
            return;
        m_line.action = CommandLine::Action::Refuse;
        m_line.error = error;
    }
    void readOption(const QString &word);
    void addValue(const Option &option, const QString &value);
    void addOperand(const QString &word);
    void checkComplete();

    const Command &m_command;
    QVector<Option> m_options;
    QStringList m_rest;
    CommandLine m_line;
};

void Reader::addValue(const Option &option, const QString &value)
{
    QStringList values{value};
    if (option.isList)
        values = namesOf(value);
    for (QString &word : values) {
        if (option.isList)
            word = word.trimmed();
        word = asWritten(option.rule, word);
        const QString problem =
            wordProblem(option.rule, word, QStringLiteral("%1 of the option %2").arg(option.value, option.name));
        if (!problem.isEmpty())
            refuse(problem);
    }
    if (option.isList)
        values.removeDuplicates();
    m_line.arguments.addOption(option.name, values);
}

void Reader::readOption(const QString &word)
{
    const QString name = optionName(word);
    const bool hasValue = word.contains(QLatin1Char('='));
    if (name == QLatin1String("--help") && !hasValue) {
        m_line.action = CommandLine::Action::ShowHelp;
        return;
    }
    const auto found = std::find_if(m_options.cbegin(), m_options.cend(),
                                    [&name](const Option &option) { return option.name == name; });
    if (found == m_options.cend()) {
        refuse(QStringLiteral("The command \"%1\" has no option \"%2\".").arg(m_command.name, name));
        return;
    }
    if (m_line.arguments.has(name) && !found->isRepeatable)
        refuse(QStringLiteral("The option %1 can be given once only.").arg(name));
    if (found->value.isEmpty()) {
        if (hasValue)
            refuse(QStringLiteral("The option %1 takes no value.").arg(name));
        m_line.arguments.addOption(name, {});
        return;
    }
    if (hasValue)
        addValue(*found, word.mid(name.size() + 1));
    else if (m_rest.isEmpty() || isOption(m_rest.first()))
        refuse(QStringLiteral("The option %1 needs a value (%2).").arg(name, found->value));
    else
        addValue(*found, m_rest.takeFirst());
}

void Reader::addOperand(const QString &word)
{
    const int index = m_line.arguments.operands().size();
    const bool isFurther = index >= m_command.operands.size();
    if (isFurther && (m_command.operands.isEmpty() || !m_command.operands.last().isRepeatable)) {
        refuse(QStringLiteral("The command \"%1\" takes no further word: \"%2\".").arg(m_command.name, word));
        return;
    }
    const Operand &operand = isFurther ? m_command.operands.last() : m_command.operands.at(index);
    const QString listed = asWritten(operand.rule, word);
    const QString problem = wordProblem(operand.rule, listed, operand.name);
    if (!problem.isEmpty())
        refuse(problem);
    // Of words of the same kind each counts once.
    if (!isFurther || !m_line.arguments.operands().mid(m_command.operands.size() - 1).contains(listed))
        m_line.arguments.addOperand(listed);
}

void Reader::checkComplete()
{
    const int given = m_line.arguments.operands().size();
    if (given < m_command.operands.size() && !m_command.operands.at(given).isOptional)
        refuse(QStringLiteral("The command \"%1\" needs %2.").arg(m_command.name, m_command.operands.at(given).name));
    for (const Option &option : qAsConst(m_options))
        if (option.isRequired && !m_line.arguments.has(option.name))
            refuse(QStringLiteral("The command \"%1\" needs the option %2.").arg(m_command.name, option.name));
    if (m_line.action == CommandLine::Action::Run && m_command.problem)
        if (const QString problem = m_command.problem(m_line.arguments); !problem.isEmpty())
            refuse(problem);
}

CommandLine Reader::read()
{
    m_line.command = &m_command;
    bool optionsEnded = false;
    // Who asks for help gets it, whatever else is wrong.
    const int end = m_rest.indexOf(QStringLiteral("--"));
    if (m_rest.mid(0, end).contains(QStringLiteral("--help"))) {
        m_line.action = CommandLine::Action::ShowHelp;
        return m_line;
    }
    while (!m_rest.isEmpty() && m_line.action == CommandLine::Action::Run) {
        const QString word = m_rest.takeFirst();
        if (!optionsEnded && word == QLatin1String("--"))
            optionsEnded = true;
        else if (!optionsEnded && isOption(word))
            readOption(word);
        else
            addOperand(word);
    }
    checkComplete();
    return m_line;
}

/// How many words a common option in front of the command takes; 0 for what is none.
int commonOptionSize(const QStringList &words, int at, const QVector<Command> &commands)
{
    const QString name = optionName(words.at(at));
    for (const Command &command : commands)
        for (const Option &option : options(command))
            if (option.name == name)
                return option.value.isEmpty() || words.at(at).contains(QLatin1Char('=')) ? 1 : 2;
    return 0;
}

/// "logs, markers or zones"
QString oneOf(const QStringList &words)
{
    return words.size() < 2
        ? words.join(QString())
        : words.mid(0, words.size() - 1).join(QStringLiteral(", ")) + QStringLiteral(" or ") + words.last();
}

CommandLine refused(const QString &error)
{
    CommandLine line;
    line.action = CommandLine::Action::Refuse;
    line.error = error;
    return line;
}

/// The words with what people type for --help out of habit: "-h", and "help" in front of a command.
QStringList withLongHelp(QStringList words)
{
    const QString help = QStringLiteral("--help");
    const int end = words.indexOf(QStringLiteral("--"));
    for (int i = 0; i < (end < 0 ? words.size() : end); ++i)
        if (words.at(i) == QLatin1String("-h"))
            words[i] = help;
    if (words.value(0) == QLatin1String("help")) {
        words.removeFirst();
        words.append(help);
    }
    return words;
}

CommandLine withoutCommand(const QStringList &words)
{
    CommandLine line;
    if (words.isEmpty())
        return refused(QStringLiteral("A command is missing."));
    if (words.first() == QLatin1String("--version"))
        line.action = CommandLine::Action::ShowVersion;
    else if (words.contains(QStringLiteral("--help")))
        line.action = CommandLine::Action::ShowHelp;
    else
        return refused(QStringLiteral("A command is missing."));
    return line;
}

} // namespace

std::optional<double> Arguments::number(const QString &option) const
{
    return has(option) ? base::parseNumber(value(option)) : std::nullopt;
}

int Arguments::count(const QString &option, int otherwise) const
{
    return base::parseInteger(value(option).toUtf8()).value_or(otherwise);
}

CommandLine parseCommandLine(const QStringList &words, const QVector<Command> &commands)
{
    const QStringList arguments = withLongHelp(words);
    int at = 0;
    while (at < arguments.size() && isOption(arguments.at(at))) {
        const QString &word = arguments.at(at);
        if (word == QLatin1String("--help") || word == QLatin1String("--version"))
            return withoutCommand(arguments.mid(at));
        const int size = commonOptionSize(arguments, at, commands);
        if (size == 0)
            return refused(QStringLiteral("Unknown option \"%1\".").arg(word));
        at += size;
    }
    if (at >= arguments.size())
        return withoutCommand({});
    const QString first = arguments.at(at);
    const QString both = first + QLatin1Char(' ') + arguments.value(at + 1);
    QStringList secondWords;
    for (const Command &command : commands) {
        if (command.name.startsWith(first + QLatin1Char(' ')))
            secondWords.append(command.name.mid(first.size() + 1));
        if (command.name == first || command.name == both)
            return Reader(command,
                          arguments.mid(0, at) + arguments.mid(at + 1 + command.name.count(QLatin1Char(' '))))
                .read();
    }
    if (secondWords.isEmpty())
        return refused(QStringLiteral("There is no command \"%1\".").arg(first));
    const QString given =
        at + 1 < arguments.size() ? QStringLiteral(", not \"%1\"").arg(arguments.at(at + 1)) : QString();
    CommandLine line = arguments.contains(QStringLiteral("--help"))
        ? CommandLine()
        : refused(
            QStringLiteral("The command \"%1\" needs one more word: %2%3.").arg(first, oneOf(secondWords), given));
    if (line.error.isEmpty())
        line.action = CommandLine::Action::ShowHelp;
    line.family = first;
    return line;
}

QString numberText(const WordRule &rule)
{
    QString text = rule.kind == WordKind::Count ? QStringLiteral("a whole number") : QStringLiteral("a number");
    if (std::isfinite(rule.lowest))
        text += QStringLiteral(" from ") + QString::fromLatin1(base::formatPlain(rule.lowest));
    if (std::isfinite(rule.highest))
        text += QStringLiteral(" to ") + QString::fromLatin1(base::formatPlain(rule.highest));
    return text;
}

QString asListed(const QStringList &choices, const QString &word)
{
    for (const QString &choice : choices)
        if (choice.compare(word, Qt::CaseInsensitive) == 0)
            return choice;
    return word;
}

QString pairProblem(const QString &option, const QString &text)
{
    const int equals = text.indexOf(QLatin1Char('='));
    return !text.left(equals).trimmed().isEmpty() && equals >= 0 && !text.mid(equals + 1).trimmed().isEmpty()
        ? QString()
        : QStringLiteral("The option %1 wants two names with \"=\" between them, not \"%2\".").arg(option, text);
}

} // namespace batch
