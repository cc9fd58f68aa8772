#include "workbench/manualdialog.h"

#include "workbench/windowsettings.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QPushButton>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace workbench {

ManualDialog::ManualDialog(const QString &folder, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("manualDialog"));
    setWindowTitle(QStringLiteral("Manual"));
    auto *pages = new QTextBrowser(this);
    pages->setObjectName(QStringLiteral("manualPages"));
    pages->setOpenLinks(false);
    // Pages of the manual here, everything else where the desktop shows it.
    connect(pages, &QTextBrowser::anchorClicked, this, [pages](const QUrl &link) {
        const QUrl target = pages->source().resolved(link);
        if (target.isLocalFile() && target.path().endsWith(QLatin1String(".md")))
            pages->setSource(target, QTextDocument::MarkdownResource);
        else
            QDesktopServices::openUrl(target);
    });
    const QString first = folder + QStringLiteral("/README.md");
    if (QFileInfo::exists(first))
        pages->setSource(QUrl::fromLocalFile(QFileInfo(first).canonicalFilePath()), QTextDocument::MarkdownResource);
    else
        pages->setPlainText(QStringLiteral("The manual is missing: there is no file %1.").arg(first));

    auto *back = new QPushButton(QStringLiteral("&Back"), this);
    back->setObjectName(QStringLiteral("backButton"));
    back->setEnabled(false);
    connect(back, &QPushButton::clicked, pages, &QTextBrowser::backward);
    connect(pages, &QTextBrowser::backwardAvailable, back, &QPushButton::setEnabled);
    auto *close = new QPushButton(QStringLiteral("&Close"), this);
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(back);
    buttons->addStretch();
    buttons->addWidget(close);
    auto *column = new QVBoxLayout(this);
    column->addWidget(pages, 1);
    column->addLayout(buttons);
    resize(860, 720);
    settings::keepSize(this);
}

} // namespace workbench
