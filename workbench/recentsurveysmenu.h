#pragma once

#include <QMenu>

namespace workbench {

/// The surveys that were open last, numbered, the newest first; as the settings hold them whenever it opens.
class RecentSurveysMenu : public QMenu
{
    Q_OBJECT

public:
    explicit RecentSurveysMenu(const QString &title, QWidget *parent = nullptr);

    /// Reads the settings again.
    void fill();

signals:
    /// The user chose the survey in this folder. Comes when the menu is closed, so that it may be filled anew.
    void chosen(const QString &path);
};

} // namespace workbench
