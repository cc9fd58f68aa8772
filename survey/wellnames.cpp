#include "survey/wellnames.h"

#include <algorithm>

namespace survey {

namespace {

constexpr int maximumStemBytes = 200; // leaves room for "^1234.wll" within a file name

} // namespace

QByteArray hostSortKey(const QString &name)
{
    QByteArray bytes = name.toUtf8();
    for (char &c : bytes)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return bytes;
}

QString storedNameProblem(const QString &name)
{
    if (name.isEmpty())
        return QStringLiteral("A well needs a name.");
    for (QChar c : name)
        if (c.category() == QChar::Other_Control)
            return QStringLiteral("The well name \"%1\" holds a control character.").arg(name);
    if (!name.isValidUtf16())
        return QStringLiteral("The well name \"%1\" holds half of a character.").arg(name);
    // The host's lists cannot hold these: they begin a folder entry, end a section or begin a comment, or are
    // read without their first character.
    if (name.startsWith(QLatin1Char('@')) || name.startsWith(QLatin1Char('!')) || name.startsWith(QLatin1String("--"))
        || name.startsWith(QLatin1Char(':')) || name.startsWith(QChar(QChar::ByteOrderMark)))
        return QStringLiteral("A well name cannot begin like \"%1\".").arg(name);
    if (name.endsWith(QLatin1Char('\\'))) // it would escape the ":" behind the name
        return QStringLiteral("A well name cannot end like \"%1\".").arg(name);
    return {};
}

QString cleanedStem(const QString &name)
{
    QString stem;
    for (QChar c : name) {
        const bool isKept =
            c.isLetterOrNumber() || c.isSurrogate() || c.isMark() || QStringLiteral("-_+.()").contains(c);
        stem += isKept ? c : QChar(QLatin1Char('_'));
    }
    if (stem.isEmpty() || stem.startsWith(QLatin1Char('.')))
        stem.prepend(QLatin1Char('_'));
    stem.truncate(maximumStemBytes);
    if (stem.at(stem.size() - 1).isHighSurrogate())
        stem.chop(1);
    while (stem.toUtf8().size() > maximumStemBytes)
        stem.chop(stem.at(stem.size() - 1).isLowSurrogate() ? 2 : 1);
    return stem;
}

QString stemOf(const QString &fileName)
{
    const int dot = fileName.lastIndexOf(QLatin1Char('.'));
    return dot > 0 ? fileName.left(dot) : fileName;
}

bool isPlainFileName(const QString &name)
{
    return !name.isEmpty() && !name.startsWith(QLatin1Char('.')) && !name.contains(QLatin1Char('/'))
        && std::none_of(name.begin(), name.end(), [](QChar c) { return c.category() == QChar::Other_Control; });
}

bool isNaturallyBefore(const QString &a, const QString &b)
{
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    int i = 0;
    int j = 0;
    while (i < a.size() && j < b.size()) {
        if (isDigit(a.at(i)) && isDigit(b.at(j))) {
            const auto number = [&isDigit](const QString &text, int *at) {
                int begin = *at;
                while (*at < text.size() && isDigit(text.at(*at)))
                    ++*at;
                while (begin + 1 < *at && text.at(begin) == u'0')
                    ++begin;
                return text.mid(begin, *at - begin);
            };
            const QString first = number(a, &i);
            const QString second = number(b, &j);
            if (first != second)
                return first.size() != second.size() ? first.size() < second.size() : first < second;
            continue;
        }
        const QChar first = a.at(i++).toCaseFolded();
        const QChar second = b.at(j++).toCaseFolded();
        if (first != second)
            return first < second;
    }
    return a.size() - i != b.size() - j ? a.size() - i < b.size() - j : a < b;
}

} // namespace survey
