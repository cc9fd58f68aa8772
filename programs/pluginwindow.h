#pragma once

#include <QString>

QT_BEGIN_NAMESPACE
class QAction;
class QDialog;
class QMainWindow;
class QMenu;
class QTreeWidget;
class QTreeWidgetItem;
class QWidget;
QT_END_NAMESPACE

namespace programs {

/// The entry that a plug-in added to the menu; null when none did.
QAction *pluginAction(const QMenu *utilities);

/// A window that stands directly below \a parent, by the name of its class; null when there is none.
QWidget *childWindow(const QWidget *parent, const char *className);

/// The plug-in's main window, worked by its project tree as a user does. The plug-in is a library of its own: only
/// Qt's classes are known here.
class PluginWindow
{
public:
    /// \a window must outlive this.
    explicit PluginWindow(QMainWindow *window);
    /// The one that the plug-in opened below \a parent; null when it opened none.
    static QMainWindow *below(const QWidget *parent);

    QMainWindow *window() const { return m_window; }
    QTreeWidget *tree() const { return m_tree; }

    /// Null when the survey has no wells.
    QTreeWidgetItem *firstWell() const;
    /// A branch or template below the first well; null when there is none.
    QTreeWidgetItem *belowFirstWell(const QString &text) const;
    void expandFirstWell() const;
    /// Shows one of the window's work areas.
    void showPage(int page) const;
    /// The work area in front; null when there is none.
    QWidget *page() const;

    /// Displays the first well with one of its templates and all its markers; \a place, 0 to 1, is how far down. False
    /// when it has no such template.
    bool displayFirstWell(const QString &templateName, double place) const;
    /// Opens the first correlation. False when there is none.
    bool openFirstCorrelation() const;
    /// Puts a place of the correlation's scene in the middle, or the nearest that can be. False when none is open.
    bool showOfCorrelation(double y, double x = 0) const;
    /// Puts a place of its first well in the middle; \a place, 0 to 1, is how far down that well. False when none is open.
    bool showOfFirstCorrelated(double place) const;
    /// Chooses a text in a box of the correlation's panel. False when there is none.
    bool chooseForCorrelation(const char *box, const QString &text) const;
    /// Selects the first curve as a click on its header does.
    void clickFirstHeader() const;

    /// The editor that edits a global template, with one of its tracks in front. Null when there is no such template.
    QWidget *editTemplate(const QString &templateName, int track) const;
    /// The editor of a new template, begun with the default one.
    QWidget *defineTemplate(const QString &newName) const;
    /// Shows a tab of the well data manager for the first well; null when the survey has no wells.
    QWidget *showWellData(int tab) const;
    /// Triggers an action of the menus and gives the dialog that it opens, by the name of both; null without it.
    QDialog *openDialog(const char *action, const char *dialog) const;

private:
    void check(QTreeWidgetItem *item) const;

    QMainWindow *m_window;
    QTreeWidget *m_tree;
};

} // namespace programs
