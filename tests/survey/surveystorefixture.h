#pragma once

#include "surveyfixture.h"

namespace survey_fixture {

inline QStringList names(const QVector<host::LogInfo> &logs)
{
    QStringList result;
    for (const host::LogInfo &log : logs)
        result.append(log.name);
    return result;
}

inline QStringList names(const QVector<host::WellEntry> &wells)
{
    QStringList result;
    for (const host::WellEntry &well : wells)
        result.append(well.name);
    return result;
}

/// A survey with the well "A" (100050.2, files "a…") and its logs.
struct OneWell : Survey
{
    explicit OneWell(const QVector<QByteArray> &logNames = {})
        : store(path())
    {
        write(".omf", wellList({{"A", "a.well"}}));
        write("a.well", wellFile());
        int number = 0;
        for (const QByteArray &name : logNames) {
            ++number;
            const auto value = static_cast<float>(number);
            write("a^" + QByteArray::number(number) + ".wll", logFile(name, {100, value, 101, value}));
        }
    }

    const QString key = QStringLiteral("100050.2");
    survey::SurveyStore store;
};

} // namespace survey_fixture
