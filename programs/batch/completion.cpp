#include "programs/batch/command.h"
#include "programs/batch/helptext.h"
#include "programs/batch/offerednames.h"

namespace batch {

namespace {

/// In single quotes for the shell.
QString quoted(QString text)
{
    return QLatin1Char('\'') + text.replace(QLatin1Char('\''), QStringLiteral("'\\''")) + QLatin1Char('\'');
}

/// What the shell offers for a word: "file", "folder", "none", or the words themselves, a line each, behind a line "@kind" where
/// the program is to be asked for names.
QString offerOf(const WordRule &rule)
{
    switch (rule.kind) {
    case WordKind::File:
        return QStringLiteral("file");
    case WordKind::Folder:
        return QStringLiteral("folder");
    case WordKind::Choice:
        return rule.choices.join(QLatin1Char('\n'));
    case WordKind::Text:
    case WordKind::Number:
    case WordKind::Count:
        return QStringLiteral("none");
    default:
        return (QStringList{QLatin1Char('@') + shellWordOf(rule.kind)} + rule.choices).join(QLatin1Char('\n'));
    }
}

/// The branch of a command: its options, what their values are and what its operands are.
QString branchOf(const Command &command)
{
    QStringList names;
    QString values;
    for (const Option &option : options(command)) {
        names.append(option.name);
        if (!option.value.isEmpty())
            values += QStringLiteral("        %1) offer=%2%3 ;;\n")
                          .arg(option.name, quoted(offerOf(option.rule)),
                               option.isList ? QStringLiteral(" list=yes") : QString());
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

# Sets options, offer and list (for the value of $option) and operand (for the operand at $place) of a command.
_lorva_batch_table()
{
    options='' offer='' list='' operand='none'
    case $1 in
)SH";

const char tail[] = R"SH(    esac
}

# Puts the words up to the one to complete into $words as they were typed: the shell breaks them at "=" and ":".
_lorva_batch_words()
{
    local line=$COMP_LINE rest word i
    words=()
    for ((i = 0; i <= COMP_CWORD; ++i)); do
        word=${COMP_WORDS[i]}
        rest=${line#"${line%%[![:space:]]*}"}
        if ((i > 0)) && [[ $rest == "$line" && ($word == [=:]* || ${words[-1]} == *[=:]) ]]; then
            words[-1]+=$word
        else
            words+=("$word")
        fi
        line=${rest#"$word"}
    done
}

# Puts a word without its quotes or backslashes into $plain.
_lorva_batch_plain()
{
    local rest=$1 quote=''
    plain=''
    if [[ $rest == [\"\']* ]]; then
        quote=${rest:0:1}
        rest=${rest:1} && rest=${rest%"$quote"}
    fi
    while [[ $quote != \' && $rest == *\\* ]]; do
        plain+=${rest%%\\*}
        rest=${rest#*\\}
        [[ $quote && $rest != [\"\\\$\`]* ]] && plain+=\\
        plain+=${rest:0:1}
        rest=${rest:1}
    done
    plain+=$rest
}

# Offers what begins with the word $2, in a list (where $3 is something) what its last name begins with.
_lorva_batch_offer()
{
    local offered=$1 current=$2 quote='' front='' breaks='' broken='' name plain
    case $offered in
    none) return ;;
    file) mapfile -t COMPREPLY < <(compgen -f -- "$current"); compopt -o filenames 2> /dev/null; return ;;
    folder) mapfile -t COMPREPLY < <(compgen -d -- "$current"); compopt -o filenames 2> /dev/null; return ;;
    esac
    [[ $current == [\"\']* ]] && quote=${current:0:1}
    _lorva_batch_plain "$current"
    current=$plain
    # Between the names of a list stand commas; one of a name stands behind a backslash.
    plain=${current//\\,/$'\001'}
    [[ $3 && $plain == *,* ]] && front=${plain%,*}, && front=${front//$'\001'/\\,}
    if [[ $offered == @* ]]; then
        name=${offered%%$'\n'*}
        offered=${offered#"$name"}$'\n'$("${words[0]}" _names "${name#@}" ${survey:+--survey="$survey"} \
            ${well:+--well="$well"} ${current:+--current="$current"} -- "${operands[@]}" 2> /dev/null)
    fi
    # The shell puts what is offered behind the last place where it breaks the word.
    [[ ! $quote && $COMP_WORDBREAKS == *=* ]] && breaks+='='
    [[ ! $quote && $COMP_WORDBREAKS == *:* ]] && breaks+=':'
    [[ $breaks && $current == *[$breaks]* ]] && broken=${current%"${current##*[$breaks]}"}
    while IFS= read -r name; do
        [[ $3 ]] && name=${name//,/\\,}
        [[ $name && $front$name == "$current"* ]] || continue
        name=$front$name
        name=${name#"$broken"}
        if [[ ! $quote ]]; then
            printf -v name %q "$name"
            name=${name//\\,/,}
        fi
        COMPREPLY+=("$name")
    done <<< "$offered"
    [[ $3 || ${COMPREPLY[0]-} == *= ]] && compopt -o nospace 2> /dev/null
}

_lorva_batch()
{
    local current first='' command='' survey='' well='' option='' options offer list operand
    local word plain place=0 i
    local -a words operands=()
    COMPREPLY=()
    _lorva_batch_words
    current=${words[-1]}
    for ((i = 1; i < ${#words[@]} - 1; ++i)); do
        word=${words[i]}
        if [[ ! $option && $word == --* ]]; then
            option=${word%%=*}
            if [[ $word != *=* ]]; then
                _lorva_batch_table "$command"
                [[ $offer || $option == --survey || $option == --jobs ]] || option=''
                continue
            fi
            word=${word#*=}
        fi
        _lorva_batch_plain "$word"
        if [[ $option ]]; then
            [[ $option == --survey ]] && survey=${plain/#\~/$HOME}
            [[ $option == --well ]] && well=$plain
            option=''
        elif [[ $command ]]; then
            operands+=("$plain")
        elif [[ $first ]]; then
            command="$first $plain"
        else
            case $plain in
            %FAMILIES%) first=$plain ;;
            *) command=$plain ;;
            esac
        fi
    done
    place=${#operands[@]}
    if [[ ! $option && $current == --*=* ]]; then
        option=${current%%=*}
        current=${current#*=}
    fi
    _lorva_batch_table "$command"
    if [[ $option ]]; then
        [[ $option == --survey ]] && offer=folder
        _lorva_batch_offer "${offer:-none}" "$current" "$list"
    elif [[ ! $command && $first ]]; then
        case $first in
%SECOND%        esac
    elif [[ ! $command ]]; then
        mapfile -t COMPREPLY < <(compgen -W '%FIRST% --help --version' -- "$current")
    elif [[ $current == --* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    else
        _lorva_batch_offer "$operand" "$current" ''
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
