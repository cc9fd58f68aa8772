#include "survey/welllistfile.h"

#include "base/folderlinks.h"
#include "base/numbers.h"

namespace survey {

namespace {

constexpr char wellFolderKey[] = "100050";

QString wellFolderOf(const QString &surveyDirectory)
{
    return surveyDirectory + QStringLiteral("/WellInfo");
}

} // namespace

bool isWell(const ObjectEntry &entry)
{
    return !entry.isFolder && entry.number > 1 && entry.group() == wellGroup;
}

QString wellKey(int number)
{
    return QLatin1String(wellFolderKey) + QLatin1Char('.') + QString::number(number);
}

int wellNumber(const QString &key)
{
    const QStringList parts = key.split(QLatin1Char('.'));
    if (parts.size() != 2 || parts.first() != QLatin1String(wellFolderKey))
        return 0;
    return base::parseInteger(parts.last().toLatin1()).value_or(0);
}

WellListFile::WellListFile(const QString &surveyDirectory)
    : m_surveyDirectory(surveyDirectory)
{
}

void WellListFile::setSurveyDirectory(const QString &path)
{
    m_surveyDirectory = path;
    m_state = {};
    m_bytes = QByteArray();
}

QString WellListFile::path() const
{
    return wellFolderOf(m_surveyDirectory) + QStringLiteral("/.omf");
}

host::Outcome<ObjectList> WellListFile::read(const Report &report)
{
    const int linkProblem = base::linkProblem(m_surveyDirectory, wellFolderOf(m_surveyDirectory));
    if (linkProblem != 0)
        return {{}, readErrorText(path(), linkProblem)};
    if (!fileState(path()).isSame(m_state)) {
        m_state = {};
        const FileRead file = readFile(path());
        if (file.errorCode != 0)
            return {{}, readErrorText(path(), file.errorCode)};
        if (m_bytes.isNull() || m_bytes != file.bytes) {
            m_bytes = QByteArray();
            m_problems.clear();
            const host::Outcome<ObjectList> list = ObjectList::parse(file.bytes, &m_problems);
            if (!list.ok())
                return {{}, QStringLiteral("Cannot read the list of wells %1: %2.").arg(path(), list.error)};
            m_list = list.value;
            m_index.clear();
            for (int i = 0; i < m_list.entries().size(); ++i)
                if (isWell(m_list.entries().at(i)))
                    m_index.insert(m_list.entries().at(i).number, i);
            m_bytes = file.bytes;
        }
        m_state = file.state;
    }
    for (const QString &problem : qAsConst(m_problems))
        report(path(), problem);
    return {m_list, {}};
}

host::Outcome<ObjectList> WellListFile::readToChange(const Report &report)
{
    host::Outcome<ObjectList> list = read(report);
    if (list.ok() && list.value.isCut())
        return {{},
                QStringLiteral("The list of wells %1 is cut off; writing it would lose the wells behind the cut. "
                               "Nothing was changed.")
                    .arg(path())};
    return list;
}

host::Status WellListFile::write(const ObjectList &list) const
{
    const base::WriteResult result = base::writeFileAtomically(path(), list.toBytes());
    return {result.ok() ? QString() : writeErrorText(path(), result.error)};
}

host::Status WellListFile::prepare(const ObjectList &list, base::AtomicFileWriter *writer) const
{
    const QByteArray bytes = list.toBytes();
    base::WriteResult result = writer->open(path());
    if (result.ok())
        result = writer->write(bytes.constData(), bytes.size());
    return {result.ok() ? QString() : writeErrorText(path(), result.error)};
}

host::Status WellListFile::putInPlace(base::AtomicFileWriter *writer) const
{
    const base::WriteResult result = writer->commit(base::Flush::Later);
    return {result.ok() ? QString() : writeErrorText(path(), result.error)};
}

const ObjectEntry *WellListFile::well(const QString &key) const
{
    const int index = m_index.value(wellNumber(key), -1);
    return index < 0 ? nullptr : &m_list.entries().at(index);
}

} // namespace survey
