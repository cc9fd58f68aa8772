#pragma once

#include "batchfixture.h"
#include "survey/surveystore.h"

/// A LAS file of the logs NEW and RES at five depths from 1000 on; RES has a gap at the third.
inline QByteArray lasText(const char *well, const char *depthUnit = "M", const char *wrap = "NO")
{
    QByteArray text = QByteArray("~V\nVERS. 2.0 :\nWRAP. ") + wrap + " :\n~W\nSTRT." + depthUnit + " 1000 :\nSTOP."
        + depthUnit + " 1004 :\nSTEP." + depthUnit + " 1 :\nNULL. -999.25 :\nWELL. " + well + " :\nUWI. " + well
        + " :\nTD.M 1500 :\n" + "~C\nDEPT." + depthUnit + " :\nNEW.API :\nRES.OHMM :\n~A\n";
    for (int i = 0; i < 5; ++i) {
        text += QByteArray::number(1000 + i) + (qstrcmp(wrap, "YES") == 0 ? "\n" : " ") + QByteArray::number(i * 10)
            + ' ' + (i == 2 ? QByteArray("-999.25") : QByteArray::number(i)) + '\n';
    }
    return text;
}

/// A log as it lies in the survey; empty where the well has none of this name.
inline host::LogData logOf(const QString &survey, const QString &well, const QString &name)
{
    survey::SurveyStore store(survey);
    for (const host::WellEntry &entry : store.list().value) {
        const auto logs = store.logs(entry.key).value;
        for (int i = 0; entry.name == well && i < logs.size(); ++i)
            if (logs.at(i).name == name)
                return store.log(entry.key, i).value;
    }
    return {};
}

/// What each test of the import has: a survey of its own and a LAS file of its well Aldra-1.
class BatchImportTest : public QObject
{
protected:
    void setUp()
    {
        m_survey = m_demo.copy();
        m_las = m_demo.newPath() + ".las";
        files::write(m_las, lasText("Aldra-1"));
    }
    BatchRun import(const QStringList &words) { return runBatch(QStringList{"import"} + words, m_survey); }

    BatchFixture m_demo;
    QString m_survey;
    QString m_las;
};
