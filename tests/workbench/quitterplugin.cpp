// A plug-in for tests of the program: says what it sees, opens a window and closes the workbench.

#include "workbench/hostaccess.h"
#include "workbench/plugininforecord.h"

#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QTableView>
#include <QTimer>
#include <QWidget>

#include <cstdio>

namespace {

void say(const char *what, const QString &text = {})
{
    std::fprintf(stdout, "%s%s\n", what, qUtf8Printable(text));
    std::fflush(stdout);
}

class Window : public QWidget
{
public:
    explicit Window(QWidget *parent)
        : QWidget(parent, Qt::Window)
    {
    }
    ~Window() override { say("window gone, host there: ", lorvaWorkbenchHost() ? "yes" : "no"); }
};

// Until a dialog is up: says what its tables show, and closes it and the workbench.
void awaitDialog(QWidget *window)
{
    constexpr int pauseMs = 50;
    auto *timer = new QTimer(window);
    QObject::connect(timer, &QTimer::timeout, window, [window, timer] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        timer->stop();
        say("dialog: ", dialog->objectName());
        for (const QTableView *table : dialog->findChildren<QTableView *>())
            for (int row = 0; row < table->model()->rowCount(); ++row)
                for (int column = 0; column < table->model()->columnCount(); ++column)
                    say("cell: ", table->model()->index(row, column).data().toString());
        dialog->reject();
        QTimer::singleShot(0, window, &QWidget::close);
    });
    timer->start(pauseMs);
    say("waiting");
}

class Manager
{
public:
    explicit Manager(host::Host &host)
        : m_host(host)
        , m_action(host.appendAction({QStringLiteral("Quitter"), QString(), [] { say("action triggered"); }}))
    {
    }
    ~Manager()
    {
        m_host.removeAction(m_action);
        say("manager gone, host there: ", lorvaWorkbenchHost() ? "yes" : "no");
    }

private:
    host::Host &m_host;
    int m_action;
};

} // namespace

extern "C" {

Q_DECL_EXPORT const workbench::PluginInfoRecord *GetQuitterPluginInfo()
{
    static const workbench::PluginInfoRecord record{"Quitter", "Tests", "Tests", "1.0", "Closes the workbench.", 0};
    return &record;
}

Q_DECL_EXPORT const char *InitQuitterPlugin(int, char **)
{
    host::Host *host = lorvaWorkbenchHost();
    if (!host)
        return "no host";
    static Manager manager(*host);
    say("started, window there: ", host->mainWidget() ? "yes" : "no");
    QTimer::singleShot(0, host->mainWidget(), [host] {
        say("survey: ", host->surveyDirectory());
        say("title: ", host->mainWidget()->windowTitle());
        if (qEnvironmentVariableIsSet("LORVA_TEST_LIST_ACTIONS"))
            for (const QAction *action :
                 host->mainWidget()->findChild<QMenu *>(QStringLiteral("utilitiesMenu"))->actions())
                say("action: ", action->text());
        static QWidget alone; // must not keep the program running
        alone.show();
        auto *window = new Window(host->mainWidget());
        window->show();
        if (qEnvironmentVariableIsSet("LORVA_TEST_AWAIT_DIALOG"))
            awaitDialog(host->mainWidget());
        else
            host->mainWidget()->close();
    });
    return nullptr;
}
}
