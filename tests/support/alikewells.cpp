#include "support/alikewells.h"

#include "support/files.h"
#include "survey/objectlist.h"

#include <QDir>
#include <QFile>

namespace testing_support {

void addAlikeWells(const QString &survey, const QString &stem, const QString &prefix, int wells)
{
    const QDir folder(survey + QStringLiteral("/WellInfo"));
    const QString listPath = folder.filePath(QStringLiteral(".omf"));
    survey::ObjectList list = survey::ObjectList::parse(files::read(listPath)).value;
    const QStringList first =
        folder.entryList({stem + QStringLiteral(".*"), stem + QStringLiteral("^*")}, QDir::Files);
    for (int i = 1; i < wells; ++i) {
        const QString name = prefix + QString::number(i);
        for (const QString &file : first)
            if (!QFile::copy(folder.filePath(file), folder.filePath(name + file.mid(stem.size()))))
                qFatal("The test cannot make a well");
        list.append(name, "Well", name + QStringLiteral(".well"));
    }
    files::write(listPath, list.toBytes());
}

} // namespace testing_support
