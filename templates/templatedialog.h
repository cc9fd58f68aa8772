#pragma once

#include "templates/templatechoices.h"
#include "templates/templatestore.h"

#include <QDialog>

#include <memory>

QT_BEGIN_NAMESPACE
class QAbstractItemModel;
class QHBoxLayout;
class QLineEdit;
class QPushButton;
class QSplitter;
class QTabWidget;
class QToolButton;
QT_END_NAMESPACE

class DefTempTrackWidget;
class TemplatePreview;
struct ProjectData;

/// What the two template editors have in common: name, track tabs, preview, and how a template is checked, written and
/// made known.
class TemplateDialog : public QDialog
{
    Q_OBJECT

public:
    /// \a projectData must outlive it. Curves are those of the well.
    TemplateDialog(ProjectData &projectData, const QString &wellName, QWidget *parent);
    ~TemplateDialog() override;

    const QString &wellName() const { return m_wellName; }
    /// Takes the preview and puts it right of the tables.
    void setPreview(TemplatePreview *preview);
    /// The tracks in the order of their tabs.
    QVector<DefTempTrackWidget *> tracks() const;
    /// Whether it holds something else than what was opened or saved last.
    bool isChanged() const { return content() != m_saved; }

signals:
    /// A template was written. \a was is the one whose place it takes, which is gone; without a name where it takes
    /// none.
    void templateSaved(const TemplateId &now, const TemplateId &was);
    /// The same, for what displays templates.
    void templateApplied(const TemplateId &now, const TemplateId &was);

public slots:
    void addTrackClicked();
    /// The track can be taken back until another one is removed.
    void removeTrackTab(int tab);
    void takeTrackBack();
    /// Lets open displays show what was saved last.
    void applyRefresh();
    /// Closes the dialog, after a question where something would be lost.
    void reject() override;

protected:
    /// Saves as the button of the dialog does; false when nothing was saved.
    virtual bool save() = 0;
    /// Refusals beyond those of name and values; empty when it may be saved.
    virtual QString problem() const { return {}; }

    ProjectData &data() const { return m_data; }
    QTabWidget *tabs() const { return m_tabs; }
    QPushButton *addButton(const char *text, const char *objectName);
    QString name() const;
    void setName(const QString &name);
    void warn(const QString &text);

    void clearTracks();
    void addTracks(const QVector<TrackInfo> &tracks);
    /// Gives the tracks the numbers of their places.
    void renumberTracks();
    void updatePreview();
    /// What the dialog holds now counts as saved.
    void noteSaved() { m_saved = content(); }

    /// False after a box that says why this cannot be saved, or when the user does not want to replace the template that
    /// \a target is already, unless \a mayReplace. The dialog may be gone then.
    bool mayWrite(const TemplateId &target, bool mayReplace);
    /// Writes the tracks. False after a box that says what failed; nothing was changed then.
    bool write(const TemplateId &target, bool tellsRemoval);
    /// Makes a written template known to project, tree and displays.
    void announce(const TemplateId &now, const TemplateId &was);

private:
    struct Content
    {
        QString name;
        QVector<QByteArray> tracks;
        bool operator!=(const Content &other) const { return name != other.name || tracks != other.tracks; }
    };

    Content content() const;
    bool isCorrect();
    DefTempTrackWidget *insertTrack();
    void forgetRemovedTrack();

    ProjectData &m_data;
    QString m_wellName;
    TemplateChoices m_choices;
    QAbstractItemModel *m_colorBars;
    QLineEdit *m_name;
    QTabWidget *m_tabs;
    QSplitter *m_splitter;
    QHBoxLayout *m_buttons;
    TemplatePreview *m_preview = nullptr;
    QToolButton *m_takeBack;
    std::unique_ptr<DefTempTrackWidget> m_removed; ///< the last one
    int m_removedPlace = 0;
    bool m_isFilling = false;
    Content m_saved;
    TemplateId m_now;
    TemplateId m_was;
};
