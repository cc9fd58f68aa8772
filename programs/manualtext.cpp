#include "programs/manualtext.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

namespace programs {

namespace {

const QLatin1String firstPage("README.md");

QString pageText(const QDir &folder, const QString &name)
{
    QFile file(folder.filePath(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// No picture; the text, the page, and a place in it.
const QRegularExpression &pageLink()
{
    static const QRegularExpression link(QStringLiteral("(?<!!)\\[([^\\]]+)\\]\\(([\\w-]+\\.md)(#[^)]*)?\\)"));
    return link;
}

QStringList linkedPages(const QString &text)
{
    QStringList pages;
    auto link = pageLink().globalMatch(text);
    while (link.hasNext())
        pages.append(link.next().captured(2));
    pages.removeDuplicates();
    return pages;
}

// Paper has no links: the number of the chapter stands behind the words.
QString withChapterNumbers(const QString &text, const QStringList &pages)
{
    QString result;
    int done = 0;
    auto links = pageLink().globalMatch(text);
    while (links.hasNext()) {
        const QRegularExpressionMatch link = links.next();
        result += text.midRef(done, link.capturedStart() - done) + link.captured(1);
        const int number = pages.indexOf(link.captured(2)) + 1;
        if (number > 0)
            result += QStringLiteral(" (chapter %1)").arg(number);
        done = link.capturedEnd();
    }
    return result + text.midRef(done);
}

} // namespace

QVector<ManualChapter> readManual(const QString &folder)
{
    const QDir pages(folder);
    const QString first = pageText(pages, firstPage);
    if (first.isEmpty())
        return {};
    QStringList names;
    for (const QString &name : linkedPages(first))
        if (pages.exists(name))
            names.append(name);
    for (const QString &name : pages.entryList({QStringLiteral("*.md")}, QDir::Files, QDir::Name))
        if (name != firstPage && !names.contains(name))
            names.append(name);
    QVector<ManualChapter> chapters;
    for (const QString &name : names) {
        QString text = withChapterNumbers(pageText(pages, name), names);
        const int titleEnd = text.indexOf(QLatin1Char('\n'));
        const QString title = text.left(titleEnd).mid(2);
        text = QStringLiteral("# %1  ").arg(chapters.size() + 1) + text.mid(2);
        chapters.append({name, title, text});
    }
    return chapters;
}

QStringList picturesOf(const ManualChapter &chapter)
{
    static const QRegularExpression picture(QStringLiteral("!\\[[^\\]]*\\]\\(([^)]+)\\)"));
    QStringList names;
    auto found = picture.globalMatch(chapter.text);
    while (found.hasNext())
        names.append(found.next().captured(1).section(QLatin1Char('/'), -1));
    return names;
}

} // namespace programs
