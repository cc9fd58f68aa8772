#include "templates/templatedialog.h"

#include "base/asker.h"
#include "base/emptyhint.h"
#include "base/gradientcombobox.h"
#include "base/keptlooks.h"
#include "base/safename.h"
#include "datastore/projectdata.h"
#include "templates/deftemptrackwidget.h"
#include "templates/templatepreview.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QSplitter>
#include <QTabWidget>
#include <QToolButton>

namespace {

constexpr int rowsMadeAtOnce = 100; // of all tracks of a template; further rows are made when they come into sight
constexpr QSize startSize(1500, 720);
constexpr int tableShare = 2; // of three parts

} // namespace

TemplateDialog::TemplateDialog(ProjectData &projectData, const QString &wellName, QWidget *parent)
    : QDialog(parent)
    , m_data(projectData)
    , m_wellName(wellName)
    , m_choices(projectData, wellName)
    , m_colorBars(GradientComboBox::makeBars(projectData.project.setupDataFolder, this))
    , m_name(new QLineEdit)
    , m_tabs(new QTabWidget)
    , m_splitter(new QSplitter(Qt::Horizontal))
    , m_buttons(new QHBoxLayout)
    , m_takeBack(new QToolButton)
{
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    m_name->setObjectName(QStringLiteral("nameEdit"));
    auto *label = new QLabel(QStringLiteral("Template Name :"));
    label->setBuddy(m_name);
    auto *nameRow = new QHBoxLayout;
    nameRow->addWidget(label);
    nameRow->addWidget(m_name, 1);
    auto *well = new QLabel(wellName);
    well->setTextFormat(Qt::PlainText);
    well->setWordWrap(true); // a long name must not widen the dialog
    well->setObjectName(QStringLiteral("wellLabel"));
    nameRow->addWidget(well);
    m_takeBack->setObjectName(QStringLiteral("takeBackButton"));
    m_takeBack->hide();
    connect(m_takeBack, &QToolButton::clicked, this, &TemplateDialog::takeTrackBack);
    m_buttons->addWidget(m_takeBack);
    m_buttons->addStretch();
    m_tabs->setObjectName(QStringLiteral("trackTabs"));
    m_tabs->setTabsClosable(true);
    m_splitter->setObjectName(QStringLiteral("previewSplitter"));
    auto *tracks = new QWidget;
    base::fillWithTabs(tracks, m_tabs,
                       QStringLiteral("\"Add Track\" adds a track. A template without tracks can be saved; a display "
                                      "of it stays empty."));
    m_splitter->addWidget(tracks);
    m_splitter->setCollapsible(0, false);
    auto *page = new QVBoxLayout(this);
    page->addLayout(nameRow);
    page->addWidget(m_splitter, 1);
    page->addLayout(m_buttons);
    resize(startSize);
    base::keepSize(this, QStringLiteral("templateEditor"));
    connect(m_tabs, &QTabWidget::tabCloseRequested, this, &TemplateDialog::removeTrackTab);
    connect(m_tabs, &QTabWidget::currentChanged, this, &TemplateDialog::updatePreview);
    const auto *removeTab = new QShortcut(QKeySequence(Qt::CTRL + Qt::Key_W), this);
    connect(removeTab, &QShortcut::activated, this, [this] { removeTrackTab(m_tabs->currentIndex()); });
}

// Tabs tell of their end, and tracks share what goes with this.
TemplateDialog::~TemplateDialog()
{
    m_tabs->disconnect(this);
    m_removed.reset();
    delete m_splitter;
}

QPushButton *TemplateDialog::addButton(const char *text, const char *objectName)
{
    auto *button = new QPushButton(QString::fromLatin1(text));
    button->setObjectName(QString::fromLatin1(objectName));
    button->setAutoDefault(false);
    m_buttons->addWidget(button);
    return button;
}

void TemplateDialog::setPreview(TemplatePreview *preview)
{
    m_preview = preview;
    m_splitter->addWidget(preview);
    m_splitter->setStretchFactor(0, tableShare);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setSizes({startSize.width() * tableShare, startSize.width()});
    updatePreview();
}

QVector<DefTempTrackWidget *> TemplateDialog::tracks() const
{
    QVector<DefTempTrackWidget *> widgets;
    for (int tab = 0; tab < m_tabs->count(); ++tab)
        widgets.append(qobject_cast<DefTempTrackWidget *>(m_tabs->widget(tab)));
    return widgets;
}

QString TemplateDialog::name() const
{
    return m_name->text().trimmed();
}

void TemplateDialog::setName(const QString &name)
{
    m_name->setText(name);
}

void TemplateDialog::warn(const QString &text)
{
    m_data.asker.warn(windowTitle(), text);
}

TemplateDialog::Content TemplateDialog::content() const
{
    Content content;
    content.name = name();
    for (const DefTempTrackWidget *track : tracks())
        content.tracks.append(track->rows().bytes());
    return content;
}

DefTempTrackWidget *TemplateDialog::insertTrack()
{
    auto *track = new DefTempTrackWidget(m_choices, m_colorBars);
    const QString name = trackNameOf(m_tabs->count() + 1);
    track->setTrackName(name);
    m_tabs->addTab(track, name);
    connect(track, &DefTempTrackWidget::changed, this, &TemplateDialog::updatePreview);
    return track;
}

void TemplateDialog::addTrackClicked()
{
    m_tabs->setCurrentWidget(insertTrack());
    updatePreview();
}

void TemplateDialog::addTracks(const QVector<TrackInfo> &tracks)
{
    {
        const QScopedValueRollback<bool> filling(m_isFilling, true);
        int atOnce = rowsMadeAtOnce;
        for (const TrackInfo &track : tracks) {
            insertTrack()->setTrack(track, atOnce);
            atOnce = std::max(0, atOnce - track.curves.size());
        }
        m_tabs->setCurrentIndex(0);
    }
    updatePreview();
}

void TemplateDialog::clearTracks()
{
    const QScopedValueRollback<bool> filling(m_isFilling, true);
    qDeleteAll(tracks());
    forgetRemovedTrack();
}

void TemplateDialog::removeTrackTab(int tab)
{
    auto *track = qobject_cast<DefTempTrackWidget *>(m_tabs->widget(tab));
    if (!track)
        return;
    m_takeBack->setText(QStringLiteral("Take %1 back").arg(track->trackName()));
    m_takeBack->setToolTip(QStringLiteral("Puts the track that was removed last where it was"));
    m_takeBack->show();
    m_tabs->removeTab(tab);
    track->setParent(nullptr);
    m_removed.reset(track);
    m_removedPlace = tab;
    renumberTracks();
    updatePreview();
}

void TemplateDialog::takeTrackBack()
{
    if (!m_removed)
        return;
    m_tabs->setCurrentIndex(m_tabs->insertTab(m_removedPlace, m_removed.release(), QString()));
    m_takeBack->hide();
    renumberTracks();
    updatePreview();
}

void TemplateDialog::forgetRemovedTrack()
{
    m_removed.reset();
    m_takeBack->hide();
}

void TemplateDialog::renumberTracks()
{
    int number = 0;
    for (DefTempTrackWidget *track : tracks()) {
        const QString name = trackNameOf(++number);
        track->setTrackName(name);
        m_tabs->setTabText(number - 1, name);
    }
}

void TemplateDialog::updatePreview()
{
    if (!m_preview || m_isFilling)
        return;
    QVector<TrackInfo> infos;
    for (const DefTempTrackWidget *track : tracks())
        infos.append(track->track());
    m_preview->showTracks(infos, m_tabs->currentIndex());
}

// Boxes come one at a time; the first wrong value gets the keyboard focus.
bool TemplateDialog::isCorrect()
{
    const QString nameProblem =
        name().isEmpty() ? QStringLiteral("Please first enter template name !") : base::typedNameProblem(name());
    if (!nameProblem.isEmpty()) {
        const QPointer<QLineEdit> field = m_name;
        warn(nameProblem);
        if (field) {
            field->setFocus(Qt::OtherFocusReason);
            field->selectAll();
        }
        return false;
    }
    if (const QString refusal = problem(); !refusal.isEmpty()) {
        warn(refusal);
        return false;
    }
    for (DefTempTrackWidget *track : tracks()) {
        const std::optional<CurveRowProblem> wrong = track->rows().problem();
        if (!wrong)
            continue;
        const QPointer<DefTempTrackWidget> self = track;
        warn(QStringLiteral("%1, %2").arg(track->trackName(), wrong->text));
        if (self) {
            m_tabs->setCurrentWidget(track);
            track->showProblem(*wrong);
        }
        return false;
    }
    return true;
}

bool TemplateDialog::mayWrite(const TemplateId &target, bool mayReplace)
{
    if (!isCorrect())
        return false;
    if (mayReplace || !templateExists(m_data.project, target))
        return true;
    const QPointer<TemplateDialog> self = this;
    const bool isWanted = m_data.asker.confirm(
        windowTitle(), QStringLiteral("This Template is already exists.\nWould you like to override it ?"));
    return self && isWanted;
}

bool TemplateDialog::write(const TemplateId &target, bool tellsRemoval)
{
    const base::ReplaceResult result = saveTemplate(m_data.project, target, content().tracks);
    if (result.ok())
        return true;
    if (tellsRemoval && result.isOldStuck)
        warn(QStringLiteral("Error in removing template !"));
    else
        warn(QStringLiteral("The template \"%1\" was not saved; what was stored is as it was.\n%2")
                 .arg(target.name, result.error));
    return false;
}

void TemplateDialog::announce(const TemplateId &now, const TemplateId &was)
{
    QStringList &globals = m_data.project.globalTemplateNames;
    const int place = was.isGlobal ? globals.indexOf(was.name) : -1;
    if (now.isGlobal && !globals.contains(now.name))
        globals.insert(place < 0 ? globals.size() : place, now.name);
    if (was.isGlobal)
        globals.removeAll(was.name);
    noteSaved();
    m_now = now;
    m_was = was;
    const QPointer<TemplateDialog> self = this;
    emit templateSaved(now, was);
    if (self)
        applyRefresh();
}

void TemplateDialog::applyRefresh()
{
    if (!m_now.name.isEmpty())
        emit templateApplied(m_now, m_was);
}

// Escape, the button "Close" and the window's own all come here.
void TemplateDialog::reject()
{
    if (isChanged()) {
        const base::Box question{
            base::BoxIcon::Question,
            windowTitle(),
            QStringLiteral("Template has been changed.\nWould you like to save it before close it ?"),
            {base::BoxButton::Yes, base::BoxButton::No, base::BoxButton::Cancel}};
        const QPointer<TemplateDialog> self = this;
        const base::BoxButton answer = m_data.asker.show(question);
        if (!self || answer == base::BoxButton::Cancel || (answer == base::BoxButton::Yes && !save()) || !self)
            return;
    }
    QDialog::reject();
}
