#include "datastore/sidefile.h"

#include "base/asker.h"
#include "base/numbers.h"
#include "datastore/projectfile.h"

#include <QFileInfo>

#include <cmath>
#include <limits>

namespace sidefile {

StoreResult writeAfterQuestion(const QString &projectFolder, const QString &path, const QByteArray &bytes,
                               const QString &title, const QString &question, base::Asker &asker)
{
    if (QFileInfo::exists(path) && !asker.confirm(title, question))
        return StoreResult::Declined;
    if (writeProjectFile(projectFolder, path, bytes).ok())
        return StoreResult::Stored;
    asker.warn(title, QStringLiteral("Unable to create file please check file read/write permission."));
    return StoreResult::Failed;
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
