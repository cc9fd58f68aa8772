#pragma once

#include <QFile>
#include <QStringList>

namespace programs {

/// What follows a program's name on the command line, in the encoding of file names: the locale must be set by then.
inline QStringList decodedArguments(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QFile::decodeName(argv[i]));
    return arguments;
}

} // namespace programs
