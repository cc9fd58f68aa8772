#include "datastore/sidefile.h"

#include "base/asker.h"
#include "base/numbers.h"
#include "datastore/projectfile.h"

#include <QFileInfo>

#include <cmath>
#include <limits>

namespace sidefile {

bool writeAfterQuestion(const QString &projectFolder, const QString &path, const QByteArray &bytes,
                        const QString &title, const QString &question, base::Asker &asker)
{
    if (QFileInfo::exists(path) && !asker.confirm(title, question))
        return false;
    if (writeProjectFile(projectFolder, path, bytes).ok())
        return true;
    asker.warn(title, QStringLiteral("Unable to create file please check file read/write permission."));
    return false;
}

float toFloat(textfields::Field text)
{
    const textfields::Field digits = textfields::trimmed(text);
    const double value = base::parseNumber(digits.data(), digits.data() + digits.size()).value_or(0);
    return std::fabs(value) <= static_cast<double>(std::numeric_limits<float>::max()) ? static_cast<float>(value) : 0;
}

QByteArray number(float value)
{
    return base::formatGeneral(std::isfinite(value) ? static_cast<double>(value) : 0);
}

} // namespace sidefile
