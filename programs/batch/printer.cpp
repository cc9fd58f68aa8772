#include "programs/batch/printer.h"

#include "base/numbers.h"
#include "programs/batch/command.h"

#include <QJsonDocument>

namespace batch {

namespace {

constexpr int gap = 2;
const QString unknown = QStringLiteral("-");

QString numberText(const Field &field, double number)
{
    return QString::fromLatin1(field.decimals < 0 ? base::formatPlain(number)
                                                  : base::formatFixed(number, field.decimals));
}

QString cellText(const Field &field, const QJsonValue &value)
{
    if (value.isNull() || value.isUndefined())
        return unknown;
    switch (field.kind) {
    case Field::Kind::Number:
    case Field::Kind::Count:
        return numberText(field, value.toDouble());
    case Field::Kind::Flag:
        return value.toBool() ? QStringLiteral("yes") : QStringLiteral("no");
    case Field::Kind::Texts: {
        QStringList texts;
        for (const QJsonValue &text : value.toArray())
            texts.append(text.toString());
        return texts.isEmpty() ? unknown : texts.join(QStringLiteral(", "));
    }
    case Field::Kind::Text:
    case Field::Kind::Records:
        break;
    }
    return value.toString().isEmpty() ? unknown : value.toString();
}

QString oneLine(const QString &text)
{
    QString line = harmless(text);
    return line.replace(QLatin1Char('\n'), QLatin1Char(' '));
}

bool isRight(const Field &field)
{
    return field.kind == Field::Kind::Number || field.kind == Field::Kind::Count;
}

// How many characters of a number stand behind its last whole digit.
int tailOf(const QString &number)
{
    const int point = number.indexOf(QLatin1Char('.'));
    return point < 0 ? 0 : number.size() - point;
}

// The cells of a column; numbers of several precisions stand with their points below each other.
QStringList columnOf(const Field &field, const QVector<Record> &records)
{
    QStringList cells;
    int longestTail = 0;
    for (const Record &record : records) {
        cells.append(oneLine(cellText(field, record.value(field.key))));
        longestTail = qMax(longestTail, tailOf(cells.last()));
    }
    if (isRight(field))
        for (QString &cell : cells)
            cell += QString(longestTail - tailOf(cell), QLatin1Char(' '));
    return cells;
}

QString tableOf(const QVector<Field> &allFields, const QVector<Record> &records, const QString &indent)
{
    QVector<Field> fields;
    for (const Field &field : allFields)
        if (!field.heading.isEmpty() && field.kind != Field::Kind::Records)
            fields.append(field);
    QVector<QStringList> lines(records.size() + 1);
    QVector<int> widths;
    for (const Field &field : qAsConst(fields)) {
        lines[0].append(field.heading);
        int width = field.heading.size();
        const QStringList cells = columnOf(field, records);
        for (int i = 0; i < cells.size(); ++i) {
            lines[i + 1].append(cells.at(i));
            width = qMax(width, cells.at(i).size());
        }
        widths.append(width);
    }
    QString text;
    for (const QStringList &cells : qAsConst(lines)) {
        QString line = indent;
        for (int i = 0; i < cells.size(); ++i) {
            line += isRight(fields.at(i)) ? cells.at(i).rightJustified(widths.at(i))
                                          : cells.at(i).leftJustified(widths.at(i));
            line += QString(gap, QLatin1Char(' '));
        }
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        text += line + QLatin1Char('\n');
    }
    return text;
}

QVector<Record> recordsOf(const QJsonValue &value)
{
    QVector<Record> records;
    for (const QJsonValue &record : value.toArray())
        records.append(record.toObject());
    return records;
}

QString sheetOf(const QVector<Field> &fields, const Record &record)
{
    int width = 0;
    for (const Field &field : fields)
        width = qMax(width, field.heading.size());
    QString text;
    for (const Field &field : fields) {
        const QJsonValue value = record.value(field.key);
        if (field.heading.isEmpty() || value.isUndefined())
            continue; // the latter where the field is not of this record
        const bool isList = field.kind == Field::Kind::Texts || field.kind == Field::Kind::Records;
        if (isList && value.toArray().isEmpty())
            continue;
        if (!isList) {
            text += (field.heading + QLatin1Char(':')).leftJustified(width + 1 + gap)
                + oneLine(cellText(field, value)) + QLatin1Char('\n');
            continue;
        }
        text += field.heading + QStringLiteral(":\n");
        if (field.kind == Field::Kind::Records)
            text += tableOf(field.fields, recordsOf(value), QStringLiteral("  "));
        for (const QJsonValue &line : value.toArray())
            if (field.kind == Field::Kind::Texts)
                text += QStringLiteral("  ") + oneLine(line.toString()) + QLatin1Char('\n');
    }
    return text;
}

} // namespace

QString harmless(QString text)
{
    for (QChar &character : text)
        if (character != QLatin1Char('\n') && character.category() == QChar::Other_Control)
            character = QChar(QChar::ReplacementCharacter);
    return text;
}

QByteArray textOf(const ResultForm &form, const Result &result)
{
    if (form.key.isEmpty())
        return result.text.toUtf8();
    const QByteArray heading = result.text.isEmpty() ? QByteArray() : result.text.toUtf8() + '\n';
    if (result.records.isEmpty())
        return heading
            + (result.failures.isEmpty() && !form.whenEmpty.isEmpty() ? form.whenEmpty.toUtf8() + '\n'
                                                                      : QByteArray());
    if (form.layout == ResultForm::Layout::Table)
        return heading + tableOf(form.fields, result.records, {}).toUtf8();
    QStringList blocks;
    for (const Record &record : result.records)
        blocks.append(sheetOf(form.fields, record));
    return heading + blocks.join(QLatin1Char('\n')).toUtf8();
}

QByteArray jsonOf(const Command &command, const QString &surveyDirectory, const Result &result)
{
    QJsonObject object;
    object.insert(QStringLiteral("command"), command.name);
    object.insert(QStringLiteral("survey"), surveyDirectory);
    object.insert(QStringLiteral("notices"), QJsonArray::fromStringList(result.notices));
    object.insert(QStringLiteral("failures"), QJsonArray::fromStringList(result.failures));
    if (!command.form.key.isEmpty()) {
        QJsonArray records;
        for (const Record &record : result.records)
            records.append(record);
        object.insert(command.form.key, records);
    }
    return QJsonDocument(object).toJson();
}

} // namespace batch
