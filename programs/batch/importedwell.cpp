#include "programs/batch/importedwell.h"

#include "programs/batch/tables.h"

namespace batch {

void ImportedWell::addLog(const QString &name, const QString &curve, const QString &group)
{
    logs.append(QJsonObject{
        {QStringLiteral("name"), name}, {QStringLiteral("curve"), curve}, {QStringLiteral("group"), group}});
}

Record ImportedWell::record() const
{
    return {{QStringLiteral("well"), well},
            {QStringLiteral("isNew"), isNew},
            {QStringLiteral("files"), QJsonArray::fromStringList(files)},
            {QStringLiteral("logs"), logs},
            {QStringLiteral("notices"), QJsonArray::fromStringList(notices)}};
}

QVector<Field> importFields()
{
    return {
        textField("well", "Well", "name of the well"),
        flagField("isNew", "New", "whether the well was made"),
        isWrittenField(),
        textsField("files", "Files", "paths of the files that went into it"),
        recordsField("logs", "Logs", "the logs that it got",
                     {textField("name", "Log", "name of the log"),
                      textField("curve", "Curve", "mnemonic in the file"),
                      textField("group", "Group", "curve group")}),
        textsField("notices", "Notices", "what was left out or changed, and what is unusual about the files"),
    };
}

} // namespace batch
