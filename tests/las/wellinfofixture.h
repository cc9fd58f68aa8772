#pragma once

#include "las/wellinfo.h"
#include "tests/las/literallasreader.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

/// One temporary file that is written and loaded again and again.
class LasFixture
{
public:
    QString path() const { return m_folder.filePath(QStringLiteral("test.las")); }

    bool write(const QByteArray &bytes) const
    {
        QFile file(path());
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }

    WellInfo load(const QByteArray &bytes) const
    {
        WellInfo info;
        if (!write(bytes) || info.load(path()) != 0)
            qFatal("cannot write or load %s", qPrintable(path()));
        return info;
    }

private:
    QTemporaryDir m_folder;
};

/// What differs between what both readers made of the same bytes; empty where nothing does.
inline QString difference(const WellInfo &info, const literal::Reader &expected)
{
    if (info.version != expected.version || info.wrapped != expected.wrapped)
        return QStringLiteral("version section");
    if (info.startDepth != expected.startDepth || info.stopDepth != expected.stopDepth || info.step != expected.step
        || info.nullValue != expected.nullValue || info.depthUnit != expected.depthUnit || info.uwi != expected.uwi)
        return QStringLiteral("well section");
    if (info.curves.size() != expected.curves.size())
        return QStringLiteral("%1 curves, not %2").arg(info.curves.size()).arg(expected.curves.size());
    for (int i = 0; i < info.curves.size(); ++i) {
        const LogCurveData &curve = info.curves.at(i);
        const literal::Curve &other = expected.curves.at(i);
        if (curve.logName != other.mnemonic || curve.displayName != other.mnemonic || curve.unit != other.unit
            || curve.description != other.description)
            return QStringLiteral("curve line %1").arg(i);
        if (curve.values != other.values || curve.depths != other.depths)
            return QStringLiteral("samples of curve %1").arg(i);
        if (curve.minimum != other.minimum || curve.maximum != other.maximum)
            return QStringLiteral("minimum or maximum of curve %1").arg(i);
    }
    if (info.lines.count() != expected.lines.size())
        return QStringLiteral("%1 lines, not %2").arg(info.lines.count()).arg(expected.lines.size());
    for (int i = 0; i < info.lines.count(); ++i) {
        if (info.lines.line(i) != expected.lines.at(i))
            return QStringLiteral("line %1").arg(i);
    }
    return QString();
}

/// The folder with real files; empty where this build knows none or it is not there.
inline QString realFiles()
{
#ifdef LORVA_SHARED_DIR
    const QString folder = QStringLiteral(LORVA_SHARED_DIR);
    if (!folder.isEmpty() && QFile::exists(folder + QStringLiteral("/las/expected.json")))
        return folder + QStringLiteral("/las/");
#endif
    return QString();
}

inline QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
