#include "programs/batch/tables.h"

namespace batch {

namespace {

Field field(const char *key, const char *heading, const char *help, Field::Kind kind)
{
    Field result;
    result.key = QString::fromUtf8(key);
    result.heading = QString::fromUtf8(heading);
    result.help = QString::fromUtf8(help);
    result.kind = kind;
    return result;
}

} // namespace

Field textField(const char *key, const char *heading, const char *help)
{
    return field(key, heading, help, Field::Kind::Text);
}

Field numberField(const char *key, const char *heading, const char *help, int decimals)
{
    Field result = field(key, heading, help, Field::Kind::Number);
    result.decimals = decimals;
    return result;
}

Field countField(const char *key, const char *heading, const char *help)
{
    return field(key, heading, help, Field::Kind::Count);
}

Field flagField(const char *key, const char *heading, const char *help)
{
    return field(key, heading, help, Field::Kind::Flag);
}

Command makeCommand(const char *name, const char *summary, const char *description, const char *example)
{
    Command command;
    command.name = QString::fromUtf8(name);
    command.summary = QString::fromUtf8(summary);
    command.description = QString::fromUtf8(description);
    command.example = QString::fromUtf8(example);
    return command;
}

Field isWrittenField(const char *heading)
{
    return flagField("isWritten", heading, "false in a dry run");
}

Field textsField(const char *key, const char *heading, const char *help)
{
    return field(key, heading, help, Field::Kind::Texts);
}

Field recordsField(const char *key, const char *heading, const char *help, const QVector<Field> &fields)
{
    Field result = field(key, heading, help, Field::Kind::Records);
    result.fields = fields;
    return result;
}

Option valueOption(const char *name, const char *value, const char *help, const WordRule &rule)
{
    Option option;
    option.name = QString::fromUtf8(name);
    option.value = QString::fromUtf8(value);
    option.help = QString::fromUtf8(help);
    option.rule = rule;
    return option;
}

Option listOption(const char *name, const char *value, const char *help, const WordRule &rule)
{
    Option option = valueOption(name, value, help, rule);
    option.isList = true;
    return option;
}

Option switchOption(const char *name, const char *help)
{
    return valueOption(name, "", help);
}

Option required(Option option)
{
    option.isRequired = true;
    return option;
}

Option repeatable(Option option)
{
    option.isRepeatable = true;
    return option;
}

Operand operand(const char *name, const char *help, const WordRule &rule)
{
    Operand result;
    result.name = QString::fromUtf8(name);
    result.help = QString::fromUtf8(help);
    result.rule = rule;
    return result;
}

Operand repeatable(Operand operand)
{
    operand.isRepeatable = true;
    return operand;
}

Operand optional(Operand operand)
{
    operand.isOptional = true;
    return operand;
}

Operand wellOperand()
{
    return operand("WELL", "the well's name; its key where several wells have the name", {WordKind::Well});
}

WordRule choiceOf(const QStringList &words)
{
    return {WordKind::Choice, words};
}

WordRule countRule(int lowest, int highest)
{
    return {WordKind::Count, {}, static_cast<double>(lowest), static_cast<double>(highest)};
}

WordRule numberRule(double lowest, double highest)
{
    return {WordKind::Number, {}, lowest, highest};
}

} // namespace batch
