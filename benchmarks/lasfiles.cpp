#include "lasfiles.h"

#include "benchsupport.h"

#include <QFile>
#include <QTemporaryDir>

#include <random>

namespace bench {

QString lasFolder()
{
    static QTemporaryDir root;
    return root.path();
}

QByteArray lasHeader(int rows)
{
    QByteArray bytes = "~Version\nVERS. 2.0 :\nWRAP. NO :\n~Well\nSTRT.M 0 :\nSTOP.M "
        + QByteArray::number(rows * lasStepM, 'f', 4)
        + " :\nSTEP.M 0.1524 :\nNULL. -999.25 :\nUWI. Well 0 :\n~Curve\nDEPT.M :\n";
    for (int i = 1; i < lasCurveCount; ++i)
        bytes += "LAS" + QByteArray::number(i) + ".x : a curve\n";
    return bytes + "~A\n";
}

QString makeLasFile(qint64 size)
{
    const QString path = lasFolder() + QStringLiteral("/%1.las").arg(size);
    if (QFile::exists(path))
        return path;
    std::mt19937 random(1);
    std::uniform_int_distribution<int> digits(1000000, 99999999);
    const auto rows = static_cast<int>(size / (lasCurveCount * 10));
    QByteArray bytes = lasHeader(rows);
    bytes.reserve(static_cast<int>(size + size / 16));
    for (int row = 0; row < rows; ++row) {
        bytes += QByteArray::number(row * lasStepM, 'f', 4).rightJustified(9);
        for (int i = 1; i < lasCurveCount; ++i)
            bytes += ' ' + QByteArray::number(digits(random) / 10000.0, 'f', 4);
        bytes += '\n';
    }
    writePlain(path, bytes);
    return path;
}

} // namespace bench
