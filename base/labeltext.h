#pragma once

#include <QString>

namespace base {

/// A name for a tab, a menu entry or a button, where "&" by itself would mark the letter behind it.
inline QString labelText(QString name)
{
    return name.replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace base
