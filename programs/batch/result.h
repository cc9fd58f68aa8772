#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QVector>

namespace batch {

/// One field of a record, as programs find it in JSON and as people read it.
struct Field
{
    enum class Kind { Text, Number, Count, Flag, Texts, Records };

    QString key; ///< in JSON; it stays what it is from one version to the next
    QString heading; ///< for people; empty where only programs see it
    QString help; ///< with the unit; without a full stop
    Kind kind = Kind::Text;
    int decimals = -1; ///< of numbers for people; -1 for as many as there are
    QVector<Field> fields = {}; ///< of the records of Kind::Records
};

/// How the records of a command are called and shown.
struct ResultForm
{
    enum class Layout {
        Table, ///< a line each
        Sheet ///< a block each, with a line for each field
    };

    QString key; ///< of the list of records in JSON; empty for a command without records
    QVector<Field> fields = {};
    Layout layout = Layout::Table;
    QString whenEmpty = {}; ///< what people read when there is no record
};

/// One record, by the keys of its fields. A number nobody knows is null.
using Record = QJsonObject;

/// What a command came to.
struct Result
{
    QVector<Record> records;
    QStringList notices; ///< sentences on what was passed over or done otherwise than asked
    QStringList failures; ///< sentences that name the file or the well; one makes the program end with 1

    QString text = {}; ///< what people read of a command without records; of others, in front of them

    static Result failed(const QString &sentence) { return failed(QStringList{sentence}); }
    static Result failed(const QStringList &sentences) { return {{}, {}, sentences, {}}; }
    static Result of(const Record &record, const QString &text = {}) { return {{record}, {}, {}, text}; }
    void add(const Result &other)
    {
        records += other.records;
        notices += other.notices;
        failures += other.failures;
    }
};

/// What a file or template that is there and may not be replaced is told with, as a sentence.
inline QString existsProblem(const QString &what)
{
    return what + QStringLiteral(" exists; --force replaces it.");
}

/// A number as JSON: null where it is none. A number of single precision gets the fewest digits that mean it.
QJsonValue jsonNumber(double value);
QJsonValue jsonNumber(float value);

} // namespace batch
