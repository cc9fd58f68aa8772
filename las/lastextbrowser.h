#pragma once

#include "las/laslines.h"

#include <QTextBrowser>

/// Shows the lines of a LAS file in a fixed-pitch font. Text is added in slices as the user scrolls down, so that a
/// file of a million lines shows at once.
class LasTextBrowser : public QTextBrowser
{
    Q_OBJECT

public:
    explicit LasTextBrowser(QWidget *parent = nullptr);

    /// Shows the first lines, scrolled to the start.
    void setLines(const LasLines &lines);
    /// How many lines are in the document so far.
    int shownLines() const { return m_shown; }

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void showMoreWhereNeeded();
    void appendSlice();

    LasLines m_lines;
    int m_shown = 0;
    bool m_isAppending = false;
};
