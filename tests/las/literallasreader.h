#pragma once

#include "base/textbytes.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <cmath>

/// A second LAS reader for comparison with WellInfo: slow, all QStrings and lists, written sentence by
/// sentence from what import is required to do, with no thought of size.
namespace literal {

struct Curve
{
    QString mnemonic, unit, description;
    double minimum = 0, maximum = 0;
    QVector<double> depths, values;
};

inline QString mnemonic(const QString &line)
{
    return line.split(u'.', Qt::SkipEmptyParts).value(0).trimmed();
}

inline QString unit(const QString &line)
{
    const QString part = line.split(u'.', Qt::SkipEmptyParts).value(1);
    if (part.isEmpty() || part.at(0).isSpace())
        return QString();
    return part.split(u' ', Qt::SkipEmptyParts).value(0).trimmed();
}

inline QString value(const QString &line)
{
    QString joined;
    const QStringList parts = line.split(u'.', Qt::SkipEmptyParts);
    for (int i = 1; i < parts.size(); ++i)
        joined += parts.at(i) + QStringLiteral(".");
    const int colon = joined.indexOf(u':');
    if (colon >= 0)
        joined = joined.left(colon);
    if (!joined.isEmpty() && joined.at(0).isSpace())
        return joined.trimmed();
    const QStringList words = joined.split(u' ', Qt::SkipEmptyParts);
    return QStringList(words.mid(1)).join(QString()).trimmed();
}

inline QString description(const QString &line)
{
    const QStringList parts = line.split(u':', Qt::SkipEmptyParts);
    return parts.isEmpty() ? QString() : parts.last().trimmed();
}

inline double number(const QString &text)
{
    bool ok = false;
    const double result = text.toDouble(&ok);
    return ok && std::isfinite(result) ? result : 0.0;
}

inline QStringList tokens(const QString &line)
{
    QStringList result;
    QString token;
    for (const QChar c : line + QStringLiteral(" ")) {
        if (!c.isSpace())
            token += c;
        else if (!token.isEmpty())
            result += std::exchange(token, QString());
    }
    return result;
}

class Reader
{
public:
    QString version, depthUnit, uwi;
    bool wrapped = false;
    double startDepth = 0, step = 0, stopDepth = 0, nullValue = 0;
    QVector<Curve> curves;
    QStringList lines;

    Reader(const QByteArray &bytes, const QString &path)
    {
        lines += QStringLiteral("<b>Filename : ") + path + QStringLiteral("</b>");
        QString text = base::decodeText(bytes);
        while (text.endsWith(QChar(0)) || text.endsWith(QChar(0x1A)))
            text.chop(1);
        m_input = base::splitLines(text);
        QString line;
        while (nextLine(line)) {
            while (line.startsWith(u'~'))
                line = dispatch(line);
        }
    }

private:
    bool nextLine(QString &line)
    {
        if (m_next >= m_input.size())
            return false;
        line = m_input.at(m_next++);
        lines += line;
        return true;
    }

    /// Reads the section that \a title begins and returns the title that ends it, or nothing at the end.
    QString dispatch(const QString &title)
    {
        const QChar letter = title.size() > 1 ? title.at(1) : QChar(u' ');
        if (letter == u'A') {
            m_firstColumn = m_namedBefore;
            m_namedBefore = curves.size();
        }
        QString line;
        while (nextLine(line)) {
            if (line.startsWith(u'~'))
                return line;
            if (letter == u'V')
                versionLine(line);
            else if (letter == u'W')
                wellLine(line);
            else if (letter == u'C')
                curveLine(line);
            else if (letter == u'A')
                dataLine(line);
        }
        return QString();
    }

    void versionLine(const QString &line)
    {
        const QString name = mnemonic(line).toUpper();
        if (name == QLatin1String("VERS"))
            version = value(line);
        if (name == QLatin1String("WRAP"))
            wrapped = value(line).toUpper() == QLatin1String("YES");
    }

    void wellLine(const QString &line)
    {
        const QString name = mnemonic(line).toUpper();
        if (name == QLatin1String("STRT")) {
            startDepth = number(value(line));
            depthUnit = unit(line);
        }
        if (name == QLatin1String("STOP"))
            stopDepth = number(value(line));
        if (name == QLatin1String("STEP"))
            step = number(value(line));
        if (name == QLatin1String("NULL"))
            nullValue = number(value(line));
        if (name == QLatin1String("UWI"))
            uwi = value(line);
    }

    void curveLine(const QString &line)
    {
        if (line.startsWith(u'#') || line.trimmed().isEmpty())
            return;
        Curve curve;
        curve.mnemonic = mnemonic(line);
        curve.unit = unit(line);
        curve.description = description(line);
        curves += curve;
    }

    void dataLine(const QString &line)
    {
        const QStringList words = tokens(line);
        if (line.startsWith(u'#') || words.isEmpty())
            return;
        // Only the curves named since the data section before this one.
        for (int i = 0; i < words.size() && m_firstColumn + i < m_namedBefore; ++i) {
            Curve &curve = curves[m_firstColumn + i];
            const double depth = number(words.at(0));
            const double sample = number(words.at(i));
            if (curve.values.isEmpty()) {
                curve.minimum = 100000000;
                curve.maximum = sample;
            } else if (curve.minimum > sample && sample - nullValue > 0.1) {
                curve.minimum = sample;
            } else if (sample > curve.maximum) {
                curve.maximum = sample;
            }
            curve.values += sample;
            curve.depths += depth;
        }
    }

    int m_firstColumn = 0;
    int m_namedBefore = 0; ///< curves named before the last data section
    QVector<QString> m_input;
    int m_next = 0;
};

} // namespace literal
