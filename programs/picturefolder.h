#pragma once

#include <QPixmap>
#include <QString>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace programs {

/// Saves pictures of widgets into one folder and tells where they are, or which could not be made and why.
class PictureFolder
{
public:
    /// Pictures show \a survey under a path that is the same on every machine.
    PictureFolder(const QString &path, const QString &survey);

    /// \a widget may be null: the picture then counts as missing. The name goes without ".png".
    void save(QWidget *widget, const QString &name);
    void save(const QPixmap &picture, const QString &name);
    /// What a picture of the widget shows.
    QPixmap pictureOf(QWidget *widget) const;
    /// Stands behind every name from now on, to tell another palette.
    void setNameEnd(const QString &end) { m_nameEnd = end; }

    /// Whether every picture was made.
    bool isComplete() const { return m_isComplete; }

private:
    QString fileOf(const QString &name) const;
    void tell(const QString &file, const QString &problem);

    QString m_path;
    QString m_survey;
    QString m_nameEnd;
    bool m_isComplete = true;
};

} // namespace programs
