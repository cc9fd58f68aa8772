#pragma once

#include <QStringList>
#include <QWidget>

QT_BEGIN_NAMESPACE
class QListWidget;
class QToolButton;
QT_END_NAMESPACE

namespace workbench {

/// A list of sentences that folds away behind its title; hidden as a whole while it is empty.
class MessagesPanel : public QWidget
{
    Q_OBJECT

public:
    explicit MessagesPanel(QWidget *parent = nullptr);

    void setMessages(const QStringList &messages);
    QStringList messages() const;
    bool isUnfolded() const;
    void setUnfolded(bool isUnfolded);

private:
    void copySelected();
    void showTitle();

    QToolButton *m_title = nullptr;
    QListWidget *m_list = nullptr;
};

} // namespace workbench
