#pragma once

#include "dialogscript.h"
#include "support/files.h"
#include "support/scriptedasker.h"
#include "survey/surveyfolder.h"
#include "workbench/topsdialog.h"
#include "workbench/topsmodel.h"

#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>

/// The import of tops over a survey of three wells, W-1 to W-3, each with the marker "Top" at 100 m.
class TopsDialogTest : public QObject
{
protected:
    void setUp()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_survey = m_folder->filePath(QStringLiteral("survey"));
        QCOMPARE(survey::createSurvey(m_survey, {}).error, QString());
        m_store = std::make_unique<survey::SurveyStore>(m_survey);
        for (const char *name : {"W-1", "W-2", "W-3"}) {
            survey::WellProperties well;
            well.name = QString::fromLatin1(name);
            well.totalDepth = 2000;
            const QString key = m_store->addWell(well).value;
            QVERIFY(m_store->writeMarkers(key, {{QStringLiteral("Top"), 100, Qt::red}}).ok());
        }
        m_asker = ScriptedAsker();
        m_chosen.clear();
    }
    QString write(const QString &name, const QByteArray &bytes)
    {
        files::write(m_folder->filePath(name), bytes);
        return m_folder->filePath(name);
    }
    workbench::FileChooser chooser()
    {
        return {[](QWidget *, const QString &, const QString &) { return QString(); },
                [this](QWidget *, const QString &, const QString &, const QString &filter) {
                    m_filter = filter;
                    return m_chosen;
                }};
    }
    std::unique_ptr<workbench::TopsDialog> open(const QStringList &paths)
    {
        auto dialog = std::make_unique<workbench::TopsDialog>(*m_store, m_asker, chooser());
        dialog->addFiles(paths);
        if (!showActive(dialog.get()))
            return {};
        return dialog;
    }
    static QTableView *table(const workbench::TopsDialog &dialog) { return dialog.findChild<QTableView *>(); }
    static QModelIndex cell(const workbench::TopsDialog &dialog, int row, int column)
    {
        return table(dialog)->model()->index(row, column);
    }
    static QString rowText(const workbench::TopsDialog &dialog, int row)
    {
        QStringList texts;
        for (int column = 0; column < workbench::TopsModel::NotesColumn; ++column)
            texts.append(cell(dialog, row, column).data().toString());
        return texts.join(u'|');
    }
    static QString state(const workbench::TopsDialog &dialog)
    {
        return dialog.findChild<QLabel *>("stateLabel")->text();
    }
    static QPushButton *button(const workbench::TopsDialog &dialog, const char *name)
    {
        return dialog.findChild<QPushButton *>(QLatin1String(name));
    }
    static QComboBox *editor(const workbench::TopsDialog &dialog)
    {
        return table(dialog)->viewport()->findChild<QComboBox *>();
    }
    /// Answers the next summary by closing it; its text is kept.
    void expectSummary()
    {
        m_summary.clear();
        onNextDialog(QStringLiteral("reportDialog"), [this](QDialog *report) {
            m_summary = report->findChild<QPlainTextEdit *>(QStringLiteral("reportText"))->toPlainText();
            QTest::keyClick(report, Qt::Key_Escape);
        });
    }
    QString markers(int well) const
    {
        survey::SurveyStore store(m_survey);
        QStringList texts;
        for (const host::Marker &marker : store.markers(store.list().value.at(well).key).value)
            texts.append(QStringLiteral("%1@%2").arg(marker.name).arg(static_cast<double>(marker.depth)));
        return texts.join(u' ');
    }

    const QByteArray threeWells =
        "Well,Formation,MD\nW-1,Top,120\nW-1,New,800\nw 2,Top,150\nElsewhere,Top,7\nW-1,Deep,9000\n"
        "W-1,Gap,\n";
    IsolatedSettings m_settings;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_survey;
    std::unique_ptr<survey::SurveyStore> m_store;
    ScriptedAsker m_asker;
    QStringList m_chosen;
    QString m_filter;
    QString m_summary;
};
