#pragma once

#include "logview/paper/sheet.h"

#include <QDialog>

QT_BEGIN_NAMESPACE
class QComboBox;
class QLabel;
class QPushButton;
QT_END_NAMESPACE

/// Asks on which paper a display is to be saved, and says beforehand what that gives.
class TrueScaleDialog : public QDialog
{
    Q_OBJECT

public:
    explicit TrueScaleDialog(const logview::SheetContents &contents, QWidget *parent = nullptr);

    const logview::Sheet &sheet() const { return m_sheet; }

private:
    void layOut();

    logview::SheetContents m_contents;
    logview::Sheet m_sheet;
    QComboBox *m_paper;
    QLabel *m_outcome;
    QPushButton *m_save = nullptr;
};
