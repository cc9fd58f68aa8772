#pragma once

#include <QDialog>

QT_BEGIN_NAMESPACE
class QLabel;
class QLineEdit;
class QTextBrowser;
class QUrl;
QT_END_NAMESPACE

namespace workbench {

/// Shows the pages of the manual from their folder, "README.md" first; links between them work, and words are found in all
/// of them.
class ManualDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ManualDialog(const QString &folder, QWidget *parent = nullptr);

    /// Shows the manual beside \a window, which stays at work. One that is open comes forward.
    static void showBeside(QWidget *window, const QString &folder);

public slots:
    /// The next place that has the words of the line: in this page, else in the pages behind it, and so around.
    void findNext();

protected:
    /// Enter in the line of words finds; elsewhere it closes.
    void keyPressEvent(QKeyEvent *event) override;

private:
    void buildPages(const QString &folder);
    QLayout *buildFindRow();
    QLayout *buildButtons();
    void openLink(const QUrl &link);
    void showPage(const QUrl &page);
    QStringList pagesFromHere() const;

    QLineEdit *m_words;
    QLabel *m_notFound;
    QTextBrowser *m_pages = nullptr;
};

} // namespace workbench
