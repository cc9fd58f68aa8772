#include "mainwin/truescaledialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>

#include <cmath>

namespace {

// "LORVA-1 at 1:500, MD 0 – 1250 m"
QString contentsText(const logview::SheetContents &contents)
{
    const auto number = [](float value) { return logview::shortNumber(static_cast<double>(value), 2); };
    const QString depths = QStringLiteral("%1 at 1:%2, %3 %4 – %5 %6")
                               .arg(contents.title, number(contents.scale), contents.depthTypeText,
                                    number(contents.axis.start), number(contents.axis.end),
                                    contents.unit == logview::Feet ? QStringLiteral("ft") : QStringLiteral("m"));
    return contents.depthsOf.isEmpty() ? depths : QStringLiteral("%1 in %2").arg(depths, contents.depthsOf);
}

QString outcomeText(const logview::Sheet &sheet)
{
    if (!sheet.ok())
        return sheet.problem;
    const auto mm = [](double px) { return logview::shortNumber(std::round(px / logview::pixelsPerMm), 0); };
    const int pages = sheet.pages.size();
    return QStringLiteral("%1 of %2 × %3 mm. Print it without fitting it to the page.")
        .arg(pages == 1 ? QStringLiteral("1 page") : QStringLiteral("%1 pages").arg(pages),
             mm(sheet.pageSize.width()), mm(sheet.pageSize.height()));
}

} // namespace

TrueScaleDialog::TrueScaleDialog(const logview::SheetContents &contents, QWidget *parent)
    : QDialog(parent)
    , m_contents(contents)
    , m_paper(new QComboBox)
    , m_outcome(new QLabel)
{
    setObjectName(QStringLiteral("TrueScaleDialog"));
    setWindowTitle(QStringLiteral("Save as PDF at true scale"));
    auto *display = new QLabel(contentsText(contents));
    display->setObjectName(QStringLiteral("contentsLabel"));
    m_paper->setObjectName(QStringLiteral("paperBox"));
    m_outcome->setObjectName(QStringLiteral("outcomeLabel"));
    for (QLabel *label : {display, m_outcome}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setMinimumWidth(420);
    }
    m_outcome->setMinimumHeight(3 * m_outcome->fontMetrics().lineSpacing());
    m_outcome->setAlignment(Qt::AlignTop);
    for (const logview::Paper paper : {logview::Paper::A4, logview::Paper::A3, logview::Paper::Continuous})
        m_paper->addItem(logview::paperText(paper), static_cast<int>(paper));
    auto *form = new QFormLayout(this);
    form->addRow(QStringLiteral("Display"), display);
    form->addRow(QStringLiteral("Paper"), m_paper);
    form->addRow(QString(), m_outcome);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    m_save = buttons->addButton(QStringLiteral("Save…"), QDialogButtonBox::AcceptRole);
    form->addRow(buttons);
    m_save->setDefault(true); // once it is in the dialog, else Enter cancels
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_paper, qOverload<int>(&QComboBox::currentIndexChanged), this, &TrueScaleDialog::layOut);
    layOut();
}

void TrueScaleDialog::layOut()
{
    m_sheet = logview::layOutSheet(m_contents, static_cast<logview::Paper>(m_paper->currentData().toInt()),
                                   logview::pdfLimits());
    m_outcome->setText(outcomeText(m_sheet));
    m_save->setEnabled(m_sheet.ok());
}
