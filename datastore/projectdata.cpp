#include "datastore/projectdata.h"

void ProjectData::tellUnread(const QString &wellName, const QStringList &logNames)
{
    QString text = QStringLiteral("Cannot get data for the selected well\n") + wellName;
    if (!logNames.isEmpty())
        text += QStringLiteral(": ") + logNames.join(QStringLiteral(", "));
    host.showError(text);
}
