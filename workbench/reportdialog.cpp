#include "workbench/reportdialog.h"

#include "base/asker.h"
#include "base/atomicfile.h"
#include "base/leftovers.h"
#include "survey/odfile.h"
#include "workbench/windowsettings.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace workbench {

namespace {

const QLatin1String reportFolder("reports");

} // namespace

ReportDialog::ReportDialog(const QString &title, const QString &sentence, const QString &text,
                           const QString &fileName, base::Asker &asker, const FileChooser &chooser, QWidget *parent)
    : QDialog(parent)
    , m_text(text)
    , m_fileName(fileName)
    , m_asker(asker)
    , m_chooser(chooser)
{
    setObjectName(QStringLiteral("reportDialog"));
    setWindowTitle(title);
    auto *head = new QLabel(sentence, this);
    head->setObjectName(QStringLiteral("reportSentence"));
    head->setTextFormat(Qt::PlainText);
    head->setWordWrap(true);
    QFont bold = head->font();
    bold.setBold(true);
    head->setFont(bold);
    auto *edit = new QPlainTextEdit(text, this);
    edit->setObjectName(QStringLiteral("reportText"));
    edit->setReadOnly(true);
    edit->setTabChangesFocus(true);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->setObjectName(QStringLiteral("buttons"));
    QPushButton *save = buttons->addButton(QStringLiteral("&Save as text…"), QDialogButtonBox::ActionRole);
    save->setObjectName(QStringLiteral("saveReportButton"));
    save->setAutoDefault(false);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    connect(save, &QPushButton::clicked, this, &ReportDialog::save);
    connect(buttons, &QDialogButtonBox::rejected, this, &ReportDialog::reject);
    auto *column = new QVBoxLayout(this);
    column->addWidget(head);
    column->addWidget(edit, 1);
    column->addWidget(buttons);
    buttons->button(QDialogButtonBox::Close)->setFocus();
    resize(820, 480);
    settings::keepSize(this);
}

void ReportDialog::save()
{
    const QString folder = settings::lastFolder(reportFolder);
    const QString path =
        m_chooser.chooseNewFile(this, QStringLiteral("Save the summary"),
                                folder.isEmpty() ? m_fileName : folder + QLatin1Char('/') + m_fileName,
                                QStringLiteral("Text files (*.txt);;All files (*)"));
    if (path.isEmpty())
        return;
    settings::setLastFolder(reportFolder, QFileInfo(path).path());
    base::removeLeftovers(QFileInfo(path).path()); // of programs that died while they wrote there
    const base::WriteResult result = base::writeFileAtomically(path, m_text.toUtf8());
    if (!result.ok())
        m_asker.warn(windowTitle(), survey::writeErrorText(path, result.error));
}

} // namespace workbench
