#pragma once

#include "support/files.h"
#include "survey/surveyfolder.h"

#include <QObject>
#include <QTemporaryDir>

#include <memory>

/// A folder of its own for each test that makes surveys.
class SurveyFolderTest : public QObject
{
protected:
    void setUp() { m_folder = std::make_unique<QTemporaryDir>(); }
    QString path(const char *name) const { return m_folder->filePath(QString::fromUtf8(name)); }
    QMap<QString, QByteArray> content() const { return files::snapshot(m_folder->path()); }

    static survey::NewSurvey demo()
    {
        survey::NewSurvey survey;
        survey.name = QStringLiteral("Demo: field");
        survey.comment = QStringLiteral("Two\nlines");
        return survey;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};
