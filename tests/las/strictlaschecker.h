#pragma once

#include <QByteArray>
#include <QMap>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QVector>

#include <cmath>

/// A LAS 2.0 file read by the letter of the public rules of that format, without any code of the product. Rules that
/// a file breaks are listed in problems.
class StrictLas
{
public:
    struct Item
    {
        QString mnemonic, unit, value, description;
    };

    explicit StrictLas(const QByteArray &bytes)
    {
        for (char c : bytes)
            if (c != '\n' && c != '\r' && (c < 32 || c > 126)) {
                problem("characters", QStringLiteral("a character outside ASCII 32 to 126"));
                break;
            }
        if (!bytes.endsWith('\n'))
            problem("line end", QStringLiteral("the last line has no end"));
        readLines(QString::fromUtf8(bytes).split(QLatin1Char('\n')));
        checkSections();
        checkItems();
        checkData();
    }

    /// rule name: what breaks it
    QMap<QString, QString> problems;
    QMap<QChar, QVector<Item>> sections;
    QStringList otherText;
    QVector<QVector<double>> rows;

    const Item *item(char section, const char *mnemonic) const
    {
        const auto found = sections.constFind(QLatin1Char(section));
        for (int i = 0; found != sections.constEnd() && i < found->size(); ++i)
            if (found->at(i).mnemonic == QLatin1String(mnemonic))
                return &found->at(i);
        return nullptr;
    }

private:
    void problem(const char *rule, const QString &text)
    {
        if (!problems.contains(QLatin1String(rule)))
            problems.insert(QLatin1String(rule), text);
    }

    void readLines(const QStringList &lines)
    {
        QChar section;
        for (int i = 0; i < lines.size(); ++i) {
            const QString &line = lines.at(i);
            if (line.isEmpty() && i + 1 == lines.size())
                break;
            if (line.isEmpty())
                problem("empty line", QStringLiteral("line %1").arg(i + 1));
            else if (section == QLatin1Char('A'))
                readRow(line);
            else if (line.startsWith(QLatin1Char('~')))
                section = beginSection(line);
            else if (line.startsWith(QLatin1Char('#')))
                continue;
            else if (section == QLatin1Char('O'))
                otherText.append(line);
            else
                readItem(section, line);
        }
    }

    QChar beginSection(const QString &line)
    {
        const QChar letter = line.size() > 1 ? line.at(1) : QChar();
        if (!QStringLiteral("VWCPOA").contains(letter))
            problem("section title", line);
        if (sections.contains(letter))
            problem("section twice", line);
        sections.insert(letter, {});
        m_order.append(letter);
        return letter;
    }

    // MNEM.UNIT DATA :DESCRIPTION. The mnemonic ends at the first dot, the unit at the first blank after it, the data
    // at the last colon.
    void readItem(QChar section, const QString &line)
    {
        const int dot = line.indexOf(QLatin1Char('.'));
        const int colon = line.lastIndexOf(QLatin1Char(':'));
        if (dot < 0 || colon < dot) {
            problem("header line", line);
            return;
        }
        int unitEnd = dot + 1;
        while (unitEnd < colon && line.at(unitEnd) != QLatin1Char(' '))
            ++unitEnd;
        Item item;
        item.mnemonic = line.left(dot).trimmed();
        item.unit = line.mid(dot + 1, unitEnd - dot - 1);
        item.value = line.mid(unitEnd, colon - unitEnd).trimmed();
        item.description = line.mid(colon + 1).trimmed();
        if (item.mnemonic.isEmpty())
            problem("mnemonic", line);
        if (item.mnemonic.contains(QLatin1Char(' ')))
            problem("blank in a mnemonic", line);
        sections[section].append(item);
    }

    void readRow(const QString &line)
    {
        QVector<double> row;
        for (const QString &token : line.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            bool ok = false;
            row.append(token.toDouble(&ok));
            if (!ok || !std::isfinite(row.last()))
                problem("data number", token);
        }
        if (line.size() > 256 && row.size() < 2)
            problem("row", line);
        rows.append(row);
    }

    void checkSections()
    {
        if (m_order.isEmpty() || m_order.first() != QLatin1Char('V'))
            problem("version first", {});
        for (char letter : {'V', 'W', 'C', 'A'})
            if (!m_order.contains(QLatin1Char(letter)))
                problem("missing section", QString(QLatin1Char(letter)));
        if (!m_order.isEmpty() && m_order.last() != QLatin1Char('A'))
            problem("data last", {});
    }

    void checkItems()
    {
        const Item *version = item('V', "VERS");
        if (!version || version->value != QLatin1String("2.0"))
            problem("version", {});
        const Item *wrap = item('V', "WRAP");
        if (!wrap || wrap->value != QLatin1String("NO"))
            problem("wrap", {});
        for (const char *mnemonic : {"STRT", "STOP", "STEP", "NULL", "COMP", "WELL", "FLD", "LOC", "SRVC", "DATE"})
            if (!item('W', mnemonic))
                problem("missing well item", QString::fromLatin1(mnemonic));
        if (!item('W', "PROV") && (!item('W', "CNTY") || !item('W', "STAT") || !item('W', "CTRY")))
            problem("missing well item", QStringLiteral("PROV"));
        if (!item('W', "UWI") && !item('W', "API"))
            problem("missing well item", QStringLiteral("UWI"));
        for (const char *mnemonic : {"STRT", "STOP", "STEP"})
            if (item('W', mnemonic) && item('W', mnemonic)->unit != QLatin1String("M"))
                problem("depth unit", QString::fromLatin1(mnemonic));
        const QVector<Item> curves = sections.value(QLatin1Char('C'));
        static const QStringList indexNames{QStringLiteral("DEPT"), QStringLiteral("DEPTH"), QStringLiteral("TIME"),
                                            QStringLiteral("INDEX")};
        if (curves.isEmpty() || !indexNames.contains(curves.first().mnemonic))
            problem("index curve", {});
        QStringList names;
        for (const Item &curve : curves) {
            if (names.contains(curve.mnemonic))
                problem("curve twice", curve.mnemonic);
            names.append(curve.mnemonic);
        }
    }

    double number(const char *mnemonic) const
    {
        const Item *found = item('W', mnemonic);
        return found ? found->value.toDouble() : std::nan("");
    }

    void checkData()
    {
        const double step = number("STEP");
        for (int i = 0; i < rows.size(); ++i) {
            if (rows.at(i).size() != sections.value(QLatin1Char('C')).size())
                problem("number of columns", QString::number(i));
            else if (i > 0 && std::fabs(rows.at(i).first() - rows.at(i - 1).first() - step) > 0.00011)
                problem("step", QString::number(i));
        }
        if (rows.isEmpty()) {
            problem("no data lines", {});
            return;
        }
        // Headers carry six digits, data four decimals.
        const auto agrees = [](double header, double row) {
            return std::fabs(header - row) <= 1e-5 * std::fabs(header);
        };
        if (!agrees(number("STRT"), rows.first().value(0)))
            problem("start", {});
        if (!agrees(number("STOP"), rows.last().value(0)))
            problem("stop", {});
    }

    QVector<QChar> m_order;
};
