#pragma once

#include "las/wellinfo.h"

#include <QStringList>

namespace las {

/// What is told of files that can be read in more than one way: by default as the dialog offers it.
struct NoticeTexts
{
    QString feet = QStringLiteral("They are taken as metres unless \"Convert feet to metres\" is checked.");
    QString repeatedNames = QStringLiteral("Give them alternate names, or the later one replaces the earlier.");
};

/// What somebody who imports the file should know of it, the gravest first; each a short plain text without line
/// breaks. The file is read the same with and without them. \a listedCurves: how many curves the dialog lists at most.
QStringList importNotices(const WellInfo &file, int listedCurves, const NoticeTexts &texts = {});

} // namespace las
