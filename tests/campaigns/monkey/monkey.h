#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPoint>
#include <QRandomGenerator>
#include <QStringList>

#include <functional>

QT_BEGIN_NAMESPACE
class QAction;
class QFileDialog;
class QMenu;
class QWindow;
QT_END_NAMESPACE

/// Clicks, drags, types, turns the wheel, chooses from menus and answers dialogs at random in all windows of the program, and
/// notes what went wrong. Begins with run() and ends the event loop when it has given its events.
class Monkey : public QObject
{
    Q_OBJECT

public:
    struct Options
    {
        quint32 seed = 1;
        int events = 1000;
        bool isTalking = false; ///< prints all that it does
        QString scratch; ///< file dialogs stay in here; holds files to open
    };
    explicit Monkey(const Options &options, QObject *parent = nullptr);

    /// A window of the program whose close button is left alone.
    void setKeptOpen(QWidget *window) { m_keptOpen = window; }
    /// Something that goes on beside the user, about once in \a rarity events. With \a isInDialogs also while a dialog is up.
    void addHappening(const QString &name, int rarity, bool isInDialogs, const std::function<void()> &happening);

    /// Begins; the application's event loop has to run then.
    void run();

    /// What went wrong, each with what was done before.
    const QStringList &findings() const { return m_findings; }
    void addFinding(const QString &text);
    int eventsGiven() const { return m_given; }
    double slowestSeconds() const { return m_slowestS; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Happening
    {
        QString name;
        int rarity;
        bool isInDialogs;
        std::function<void()> happen;
    };

    void schedule();
    void tick();
    void measure();
    void end();
    void act();
    bool actBeside();
    void answer(QWidget *dialog);
    void chooseFile(QFileDialog *dialog);
    void useMenu(QMenu *menu);
    void openMenu(QWidget *window);
    void useWindow(QWidget *window);
    void click(QWidget *window);
    void drag(QWidget *window);
    void type(QWidget *window);
    void wheel(QWidget *window);
    void resize(QWidget *window);
    QWidget *chooseWindow();
    QWidget *chooseWidget(QWidget *window);
    QPoint placeIn(QWidget *widget);
    bool isLeftAlone(const QAction *action) const;
    int below(int end) { return static_cast<int>(m_random.bounded(end)); }
    bool oneIn(int count) { return below(count) == 0; }
    void note(const QString &what);

    QRandomGenerator m_random;
    Options m_options;
    QWidget *m_keptOpen = nullptr;
    QVector<Happening> m_happenings;
    QStringList m_done; ///< the last things
    QStringList m_findings;
    int m_given = 0;
    int m_endingTicks = 0;
    bool m_isActing = false; ///< no loop of events runs inside what was done last, as far as is known
    QElapsedTimer m_sinceAct;
    QElapsedTimer m_sinceTick;
    double m_cpuS = 0;
    double m_slowestS = 0;
};
