#include "datastore/curvegroups.h"
#include "programs/batch/command.h"
#include "programs/batch/helptext.h"

namespace batch {

namespace {

/// In single quotes for the shell.
QString quoted(QString text)
{
    return QLatin1Char('\'') + text.replace(QLatin1Char('\''), QStringLiteral("'\\''")) + QLatin1Char('\'');
}

/// What the shell offers for a word: "file", "folder", "well", "none", or the words themselves, a line each.
QString offerOf(const WordRule &rule)
{
    switch (rule.kind) {
    case WordKind::File:
        return QStringLiteral("file");
    case WordKind::Folder:
        return QStringLiteral("folder");
    case WordKind::Well:
        return QStringLiteral("well");
    case WordKind::Choice:
        return rule.choices.join(QLatin1Char('\n'));
    case WordKind::Group:
        return curveGroupNames().join(QLatin1Char('\n'));
    case WordKind::Text:
    case WordKind::Number:
    case WordKind::Count:
        break;
    }
    return QStringLiteral("none");
}

/// The branch of a command: its options, what their values are and what its operands are.
QString branchOf(const Command &command)
{
    QStringList names;
    QString values;
    for (const Option &option : options(command)) {
        names.append(option.name);
        if (!option.value.isEmpty())
            values += QStringLiteral("        %1) offer=%2 ;;\n").arg(option.name, quoted(offerOf(option.rule)));
    }
    QString operands;
    for (int i = 0; i < command.operands.size(); ++i) {
        const Operand &operand = command.operands.at(i);
        operands +=
            QStringLiteral("        %1) operand=%2 ;;\n")
                .arg(operand.isRepeatable ? QStringLiteral("*") : QString::number(i), quoted(offerOf(operand.rule)));
    }
    return QStringLiteral("    %1)\n        options=%2\n        case $option in\n%3        esac\n"
                          "        case $place in\n%4        esac\n        ;;\n")
        .arg(quoted(command.name), quoted(names.join(QLatin1Char(' '))), values, operands);
}

const char head[] = R"SH(# Completion of lorva-batch for bash; the program makes it from its own tables.

# Sets options, offer (for the value of $option) and operand (for the operand at $place) of a command.
_lorva_batch_table()
{
    options='' offer='' operand='none'
    case $1 in
)SH";

const char tail[] = R"SH(    esac
}

_lorva_batch_offer()
{
    local offered=$1 current=$2 name
    case $offered in
    none) ;;
    file) mapfile -t COMPREPLY < <(compgen -f -- "$current"); compopt -o filenames 2> /dev/null ;;
    folder) mapfile -t COMPREPLY < <(compgen -d -- "$current"); compopt -o filenames 2> /dev/null ;;
    *)
        [[ $offered == well ]] &&
            offered=$("${COMP_WORDS[0]}" _well-names ${survey:+--survey "$survey"} 2> /dev/null)
        while IFS= read -r name; do
            [[ $name && $name == "${current//\\/}"* ]] && COMPREPLY+=("$(printf %q "$name")")
        done <<< "$offered"
        ;;
    esac
}

_lorva_batch()
{
    local current=${COMP_WORDS[COMP_CWORD]} first='' command='' survey='' option='' options offer operand
    local word place=0 i
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; ++i)); do
        word=${COMP_WORDS[i]}
        if [[ $option ]]; then
            [[ $option == --survey ]] && survey=$word
            option=''
        elif [[ $word == --* ]]; then
            option=$word
            _lorva_batch_table "$command"
            [[ $offer || $word == --survey || $word == --jobs ]] || option=''
        elif [[ $command ]]; then
            ((++place))
        elif [[ $first ]]; then
            command="$first $word"
        else
            case $word in
            %FAMILIES%) first=$word ;;
            *) command=$word ;;
            esac
        fi
    done
    _lorva_batch_table "$command"
    if [[ $option ]]; then
        [[ $option == --survey ]] && offer=folder
        _lorva_batch_offer "$offer" "$current"
    elif [[ ! $command && $first ]]; then
        case $first in
%SECOND%        esac
    elif [[ ! $command ]]; then
        mapfile -t COMPREPLY < <(compgen -W '%FIRST% --help --version' -- "$current")
    elif [[ $current == --* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    else
        _lorva_batch_offer "$operand" "$current"
    fi
}

complete -F _lorva_batch lorva-batch
)SH";

} // namespace

QString bashCompletion(const QVector<Command> &commands)
{
    QString branches;
    QStringList firstWords;
    QStringList families;
    QString secondWords;
    for (const Command &command : commands) {
        if (command.isHidden)
            continue;
        branches += branchOf(command);
        const QString first = command.name.section(QLatin1Char(' '), 0, 0);
        firstWords.append(first);
        if (first != command.name)
            families.append(first);
    }
    firstWords.removeDuplicates();
    families.removeDuplicates();
    for (const QString &family : qAsConst(families)) {
        QStringList words;
        for (const Command &command : commands)
            if (command.name.startsWith(family + QLatin1Char(' ')))
                words.append(command.name.section(QLatin1Char(' '), 1));
        secondWords += QStringLiteral("        %1) mapfile -t COMPREPLY < <(compgen -W '%2' -- \"$current\") ;;\n")
                           .arg(family, words.join(QLatin1Char(' ')));
    }
    QString end = QString::fromLatin1(tail);
    end.replace(QLatin1String("%FAMILIES%"), families.join(QLatin1String(" | ")));
    end.replace(QLatin1String("%SECOND%"), secondWords);
    end.replace(QLatin1String("%FIRST%"), firstWords.join(QLatin1Char(' ')));
    return QString::fromLatin1(head) + branches + end;
}

} // namespace batch
