#include "programs/picturefolder.h"

#include "base/atomicfile.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QTextDocument>
#include <QTextEdit>

#include <cstdio>

namespace programs {

namespace {

const QLatin1String shownFolder("/surveys/Demo");

// In texts that are only shown, and in fields: nothing hears of it. What has no such path stays as it is, its cursor too.
void showPath(QWidget *widget, const QString &path, const QString &instead)
{
    const QSignalBlocker blocker(widget);
    if (auto *label = qobject_cast<QLabel *>(widget))
        label->setText(label->text().replace(path, instead));
    else if (auto *field = qobject_cast<QLineEdit *>(widget); field && field->text().contains(path))
        field->setText(field->text().replace(path, instead));
    else if (auto *text = qobject_cast<QTextEdit *>(widget))
        for (QTextCursor found = text->document()->find(path); !found.isNull(); found = text->document()->find(path))
            found.insertText(instead, found.charFormat());
}

/// As long as it lives the texts of a widget name one path instead of another.
class OtherPath
{
public:
    OtherPath(QWidget *widget, const QString &path)
        : m_widget(widget)
        , m_path(path)
    {
        if (!m_path.isEmpty())
            replace(m_path, shownFolder);
    }
    ~OtherPath()
    {
        if (!m_path.isEmpty())
            replace(shownFolder, m_path);
    }
    OtherPath(const OtherPath &) = delete;
    OtherPath &operator=(const OtherPath &) = delete;

private:
    void replace(const QString &path, const QString &instead)
    {
        for (QWidget *child : m_widget->findChildren<QWidget *>())
            if (!child->objectName().startsWith(QLatin1String("qt_")))
                showPath(child, path, instead);
    }

    QWidget *m_widget;
    QString m_path;
};

} // namespace

PictureFolder::PictureFolder(const QString &path, const QString &survey)
    : m_path(QDir(path).absolutePath())
    , m_survey(survey)
{
    QDir().mkpath(m_path);
}

QString PictureFolder::fileOf(const QString &name) const
{
    return QStringLiteral("%1/%2%3.png").arg(m_path, name, m_nameEnd);
}

void PictureFolder::tell(const QString &file, const QString &problem)
{
    if (problem.isEmpty())
        std::printf("%s\n", qUtf8Printable(file));
    else
        std::fprintf(stderr, "Cannot draw %s: %s.\n", qUtf8Printable(file), qUtf8Printable(problem));
    m_isComplete = m_isComplete && problem.isEmpty();
}

void PictureFolder::save(QWidget *widget, const QString &name)
{
    if (widget)
        save(pictureOf(widget), name);
    else
        tell(fileOf(name), QStringLiteral("there is no such window"));
}

void PictureFolder::save(const QPixmap &picture, const QString &name)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (picture.save(&buffer, "PNG"))
        tell(fileOf(name), base::writeFileAtomically(fileOf(name), bytes).error);
    else
        tell(fileOf(name), QStringLiteral("the picture cannot be encoded"));
}

QPixmap PictureFolder::pictureOf(QWidget *widget) const
{
    QCoreApplication::processEvents();
    const OtherPath path(widget, m_survey);
    QCoreApplication::processEvents();
    return widget->grab();
}

} // namespace programs
