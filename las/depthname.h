#pragma once

#include <QSet>
#include <QString>

namespace las {

/// Whether a curve is a depth by its mnemonic.
inline bool isDepthName(const QString &mnemonic)
{
    static const QSet<QString> names{QStringLiteral("MD"), QStringLiteral("DMEA"), QStringLiteral("TVD"),
                                     QStringLiteral("INDEX")};
    const QString name = mnemonic.toUpper();
    return name.contains(QLatin1String("DEP")) || name.contains(QLatin1String("DPT")) || names.contains(name);
}

} // namespace las
