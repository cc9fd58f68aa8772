#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

QT_BEGIN_NAMESPACE
class QDialog;
QT_END_NAMESPACE

/// What the workbench remembers of a user between two runs.
namespace workbench::settings {

constexpr int maximumRecentSurveys = 8;

/// Full paths, the latest first.
QStringList recentSurveys();
/// Puts the survey in front of the others.
void addRecentSurvey(const QString &path);
void removeRecentSurvey(const QString &path);

/// The survey to open at the next start; empty when there is none.
QString lastSurvey();
void setLastSurvey(const QString &path);

/// The folder in which a file dialog of this purpose starts; the user's home before it was used.
QString lastFolder(const QString &purpose);
void setLastFolder(const QString &purpose, const QString &path);

/// A widget's geometry or state, by the widget's name.
QByteArray widgetState(const QString &name);
void setWidgetState(const QString &name, const QByteArray &state);

/// The dialog opens in the size in which one of its object name was last closed.
void keepSize(QDialog *dialog);

} // namespace workbench::settings
