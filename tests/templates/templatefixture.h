#pragma once

#include "datastore/curvegrouptable.h"
#include "support/files.h"
#include "support/projectfixture.h"
#include "templates/curverowwidgets.h"
#include "templates/deftemptrackwidget.h"
#include "templates/templatedialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>

#include <memory>

/// A survey with the wells "W" (some logs) and "Bare" (none) and a template editor, worked as a user does.
class TemplateFixture : public ProjectFixture
{
public:
    TemplateFixture()
    {
        CurveGroupTable::instance().clear();
        addWell(QStringLiteral("W"),
                {QStringLiteral("GR"), QStringLiteral("LLD"), QStringLiteral("LLS"), QStringLiteral("ODD|LOG")});
        addWell(QStringLiteral("Bare"));
        ProjectFixture::open(); // makes the project, with its seeds
    }

    template<class Dialog, class... Arguments>
    Dialog *open(Arguments &&...arguments)
    {
        if (!m_isOpen)
            ProjectFixture::open();
        m_isOpen = true;
        auto made = std::make_unique<Dialog>(*launch, std::forward<Arguments>(arguments)...);
        Dialog *result = made.get();
        dialog = std::move(made);
        dialog->show();
        return result;
    }

    QString templatePath(const QString &owner, const QString &name) const
    {
        return path(QStringLiteral("/Templates/%1/%2").arg(owner, name));
    }
    QByteArray trackFile(const QString &owner, const QString &name, int number) const
    {
        return files::read(templatePath(owner, name) + QStringLiteral("/Track_%1.txt").arg(number));
    }
    QMap<QString, QByteArray> templates() const { return files::snapshot(path(QStringLiteral("/Templates"))); }

    template<class Widget>
    Widget *find(const char *name) const
    {
        auto *found = dialog->findChild<Widget *>(QString::fromLatin1(name));
        if (!found)
            qFatal("no %s", name);
        return found;
    }
    void click(const char *button) const { QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton); }
    bool hasIcon(const QString &fileName) const
    {
        const QImage image = dialog->windowIcon().pixmap(32, 32).toImage();
        return !image.isNull() && image == host.icon(fileName).pixmap(32, 32).toImage();
    }
    void setName(const QString &name) const { find<QLineEdit>("nameEdit")->setText(name); }
    QTabWidget *tabs() const { return find<QTabWidget>("trackTabs"); }
    DefTempTrackWidget *track(int tab) const { return qobject_cast<DefTempTrackWidget *>(tabs()->widget(tab)); }
    QTableWidget *table(int tab) const { return track(tab)->findChild<QTableWidget *>(); }
    void addTrack(const QString &type = QStringLiteral("Linear")) const
    {
        click("addTrackButton");
        choose(tabs()->currentWidget()->findChild<QComboBox *>(QStringLiteral("trackTypeBox")), type);
    }
    /// Adds a curve to a track and gives its row.
    int addCurve(int tab, const QString &group = {}, const QString &left = {}, const QString &right = {}) const
    {
        QTest::mouseClick(track(tab)->findChild<QPushButton *>(QStringLiteral("addCurveButton")), Qt::LeftButton);
        const int row = table(tab)->rowCount() - 1;
        if (!group.isNull())
            choose(box(tab, row, curvecolumn::Group), group);
        if (!left.isNull())
            type(tab, row, curvecolumn::LeftValue, left);
        if (!right.isNull())
            type(tab, row, curvecolumn::RightValue, right);
        return row;
    }
    template<class Widget>
    Widget *cell(int tab, int row, int column) const
    {
        return qobject_cast<Widget *>(table(tab)->cellWidget(row, column));
    }
    QComboBox *box(int tab, int row, int column) const { return cell<QComboBox>(tab, row, column); }
    QLineEdit *edit(int tab, int row, int column) const { return cell<QLineEdit>(tab, row, column); }
    void type(int tab, int row, int column, const QString &text) const
    {
        QLineEdit *field = edit(tab, row, column);
        field->setFocus();
        field->selectAll();
        if (text.isEmpty())
            QTest::keyClick(field, Qt::Key_Delete);
        else
            QTest::keyClicks(field, text);
    }
    void remove(int tab, int row) const
    {
        QTest::mouseClick(cell<QPushButton>(tab, row, curvecolumn::Remove), Qt::LeftButton);
    }
    static void choose(QComboBox *box, const QString &text)
    {
        const int index = box->findText(text);
        if (index < 0)
            qFatal("no choice %s", qPrintable(text));
        box->setCurrentIndex(index);
    }
    static QStringList entries(const QComboBox *box)
    {
        QStringList texts;
        for (int i = 0; i < box->count(); ++i)
            texts.append(box->itemText(i));
        return texts;
    }
    QStringList tabTexts() const
    {
        QStringList texts;
        for (int tab = 0; tab < tabs()->count(); ++tab)
            texts.append(tabs()->tabText(tab));
        return texts;
    }
    /// Texts of the boxes since the last call; their titles are that of the dialog.
    QStringList boxTexts()
    {
        QStringList texts;
        for (const base::Box &box : qAsConst(asker.boxes)) {
            if (dialog && box.title != dialog->windowTitle())
                texts.append(box.title + QStringLiteral(": "));
            texts.append(box.text);
        }
        asker.boxes.clear();
        return texts;
    }

    std::unique_ptr<TemplateDialog> dialog;

private:
    bool m_isOpen = false;
};
