#pragma once

#include <QScrollArea>

QT_BEGIN_NAMESPACE
class QLabel;
QT_END_NAMESPACE

/// Lines of text on yellow above what they are about: as high as they need, but no more than some lines; then they
/// scroll. Hidden while there is no text.
class NoticeArea : public QScrollArea
{
    Q_OBJECT

public:
    /// The lines are shown to the letter.
    explicit NoticeArea(const QStringList &lines, QWidget *parent = nullptr);

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

private:
    QLabel *m_label = nullptr;
};
