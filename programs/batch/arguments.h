#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

namespace batch {

struct Command;
struct WordRule;

/// The options and operands that were given to a command, checked by its tables.
class Arguments
{
public:
    bool has(const QString &option) const { return m_options.contains(option); }
    /// The value of an option; null where it was not given.
    QString value(const QString &option) const { return m_options.value(option).value(0); }
    /// All values of an option; those of a list one by one.
    QStringList values(const QString &option) const { return m_options.value(option); }
    std::optional<double> number(const QString &option) const;
    /// A count, or \a otherwise where it was not given.
    int count(const QString &option, int otherwise) const;

    const QStringList &operands() const { return m_operands; }
    QString operand(int index) const { return m_operands.value(index); }

    void addOption(const QString &option, const QStringList &values) { m_options[option] += values; }
    void addOperand(const QString &word) { m_operands.append(word); }

private:
    QHash<QString, QStringList> m_options;
    QStringList m_operands;
};

/// What the program was asked to do.
struct CommandLine
{
    enum class Action { Run, ShowHelp, ShowVersion, Refuse };

    Action action = Action::Run;
    const Command *command = nullptr; ///< one of the given ones; null where none was named
    QString family; ///< the first word of several commands of two words, where only that was given
    Arguments arguments;
    QString error; ///< why the line is refused, as a sentence
};

/// Reads the arguments that follow the program's name. "--option value" and "--option=value" are the same; a value that
/// begins with "--" needs the second form. Behind "--" every word is an operand. Options may stand before the command.
/// "-h" is "--help", and so is "help" in front of a command. Of a list and of operands of one kind each word counts once.
CommandLine parseCommandLine(const QStringList &words, const QVector<Command> &commands);

/// What a number or count may be: "a whole number from 1 to 10".
QString numberText(const WordRule &rule);

/// The word as one of the choices, however it is typed; the word itself where it is none of them.
QString asListed(const QStringList &choices, const QString &word);

/// What is wrong with a pair "A=B" of words that are not empty, as a sentence; empty when nothing is.
QString pairProblem(const QString &option, const QString &text);

} // namespace batch
