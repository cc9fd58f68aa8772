#pragma once

#include <QList>
#include <QWidget>

QT_BEGIN_NAMESPACE
class QAction;
class QHBoxLayout;
class QLabel;
QT_END_NAMESPACE

namespace workbench {

/// What to do next, in the middle of an empty window: a heading, a sentence and a button per action, labelled with
/// its icon text.
class HintPage : public QWidget
{
    Q_OBJECT

public:
    explicit HintPage(QWidget *parent = nullptr);

    /// The actions stay the caller's and must outlive the page.
    void setHint(const QString &heading, const QString &text, const QList<QAction *> &actions);

private:
    QLabel *m_heading = nullptr;
    QLabel *m_text = nullptr;
    QHBoxLayout *m_buttons = nullptr;
};

} // namespace workbench
