#include "workbench/manualdialog.h"

#include "workbench/windowsettings.h"

#include <QAction>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

namespace workbench {

namespace {

const QLatin1String pageEnding(".md");

// As it is read, without the marks of headings, links and the like.
bool hasWords(const QString &path, const QString &words)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QTextDocument page;
    page.setMarkdown(QString::fromUtf8(file.readAll()));
    return !page.find(words).isNull();
}

} // namespace

ManualDialog::ManualDialog(const QString &folder, QWidget *parent)
    : QDialog(parent)
    , m_words(new QLineEdit(this))
    , m_notFound(new QLabel(this))
{
    setObjectName(QStringLiteral("manualDialog"));
    setWindowTitle(QStringLiteral("Manual"));
    auto *column = new QVBoxLayout(this);
    column->addLayout(buildFindRow());
    buildPages(folder);
    column->addWidget(m_pages, 1);
    column->addLayout(buildButtons());
    m_pages->setFocus();
    resize(860, 720);
    settings::keepSize(this);
}

void ManualDialog::showBeside(QWidget *window, const QString &folder)
{
    auto *manual = window->findChild<ManualDialog *>();
    if (!manual) {
        manual = new ManualDialog(folder, window);
        manual->setAttribute(Qt::WA_DeleteOnClose);
    }
    manual->show();
    manual->raise();
    manual->activateWindow();
}

void ManualDialog::buildPages(const QString &folder)
{
    m_pages = new QTextBrowser(this);
    m_pages->setObjectName(QStringLiteral("manualPages"));
    m_pages->setOpenLinks(false);
    connect(m_pages, &QTextBrowser::anchorClicked, this, &ManualDialog::openLink);
    const QString first = folder + QStringLiteral("/README.md");
    if (QFileInfo::exists(first))
        showPage(QUrl::fromLocalFile(QFileInfo(first).canonicalFilePath()));
    else
        m_pages->setPlainText(QStringLiteral("The manual is missing: there is no file %1.").arg(first));
}

QLayout *ManualDialog::buildFindRow()
{
    m_words->setObjectName(QStringLiteral("findEdit"));
    m_words->setPlaceholderText(QStringLiteral("Find in the manual (Ctrl+F)"));
    m_words->setClearButtonEnabled(true);
    m_notFound->setObjectName(QStringLiteral("notFoundLabel"));
    m_notFound->setTextFormat(Qt::PlainText);
    connect(m_words, &QLineEdit::textEdited, m_notFound, &QLabel::clear);
    auto *next = new QPushButton(QStringLiteral("Find &next"), this);
    next->setObjectName(QStringLiteral("findNextButton"));
    next->setAutoDefault(false);
    next->setToolTip(QStringLiteral("F3"));
    connect(next, &QPushButton::clicked, this, &ManualDialog::findNext);
    auto *find = new QAction(this);
    find->setShortcut(QKeySequence::Find);
    connect(find, &QAction::triggered, m_words, [this] {
        m_words->setFocus(Qt::ShortcutFocusReason);
        m_words->selectAll();
    });
    auto *again = new QAction(this);
    again->setShortcut(QKeySequence::FindNext);
    connect(again, &QAction::triggered, this, &ManualDialog::findNext);
    addActions({find, again});
    auto *row = new QHBoxLayout;
    row->addWidget(m_words, 1);
    row->addWidget(next);
    row->addWidget(m_notFound);
    return row;
}

QLayout *ManualDialog::buildButtons()
{
    auto *back = new QPushButton(QStringLiteral("&Back"), this);
    back->setObjectName(QStringLiteral("backButton"));
    back->setEnabled(false);
    connect(back, &QPushButton::clicked, m_pages, &QTextBrowser::backward);
    connect(m_pages, &QTextBrowser::backwardAvailable, back, &QPushButton::setEnabled);
    auto *close = new QPushButton(QStringLiteral("&Close"), this);
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    auto *row = new QHBoxLayout;
    row->addWidget(back);
    row->addStretch();
    row->addWidget(close);
    return row;
}

// Pages of the manual here, everything else where the desktop shows it.
void ManualDialog::openLink(const QUrl &link)
{
    const QUrl target = m_pages->source().resolved(link);
    if (target.isLocalFile() && target.path().endsWith(pageEnding))
        showPage(target);
    else
        QDesktopServices::openUrl(target);
}

void ManualDialog::showPage(const QUrl &page)
{
    m_pages->setSource(page, QTextDocument::MarkdownResource);
}

// The pages behind the one that is shown, from the last one on from the first, that one at the end.
QStringList ManualDialog::pagesFromHere() const
{
    const QFileInfo here(m_pages->source().toLocalFile());
    if (!here.isFile())
        return {};
    QStringList paths;
    for (const QFileInfo &page : here.dir().entryInfoList({QLatin1Char('*') + pageEnding}, QDir::Files, QDir::Name))
        paths.append(page.filePath());
    const int behind = paths.indexOf(here.filePath()) + 1;
    std::rotate(paths.begin(), paths.begin() + behind, paths.end());
    return paths;
}

void ManualDialog::findNext()
{
    const QString words = m_words->text().trimmed();
    m_notFound->clear();
    if (words.isEmpty() || m_pages->find(words))
        return;
    for (const QString &path : pagesFromHere()) {
        if (!hasWords(path, words))
            continue;
        const QUrl page = QUrl::fromLocalFile(path);
        if (page != m_pages->source())
            showPage(page);
        m_pages->moveCursor(QTextCursor::Start);
        m_pages->find(words);
        return;
    }
    m_notFound->setText(QStringLiteral("Not found"));
}

void ManualDialog::keyPressEvent(QKeyEvent *event)
{
    if (m_words->hasFocus() && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        findNext();
    else
        QDialog::keyPressEvent(event);
}

} // namespace workbench
