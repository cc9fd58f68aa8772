#include "base/progressbox.h"

#include "base/nestedevents.h"

#include <QLabel>
#include <QProgressDialog>

#include <algorithm>

namespace base {

namespace {

constexpr int permille = 1000;
constexpr int patienceMs = 700;

} // namespace

ProgressBox::ProgressBox(const QString &title, const QString &what, QWidget *window)
    : m_box(new QProgressDialog(window))
{
    m_box->setObjectName(QStringLiteral("progressBox"));
    m_box->setWindowTitle(title);
    auto *label = new QLabel(what);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
    m_box->setLabel(label);
    m_box->setCancelButtonText(QStringLiteral("Cancel"));
    m_box->setWindowModality(Qt::ApplicationModal);
    m_box->setRange(0, permille);
    m_box->setMinimumDuration(patienceMs);
    m_box->setAutoReset(false);
    m_box->setAutoClose(false);
}

ProgressBox::~ProgressBox()
{
    delete m_box;
}

bool ProgressBox::step(qint64 done, qint64 all)
{
    const NestedEvents events; // the box handles them
    if (m_box)
        m_box->setValue(
            static_cast<int>(std::clamp<qint64>(done * permille / std::max<qint64>(all, 1), 0, permille)));
    return m_box && !m_box->wasCanceled();
}

} // namespace base
