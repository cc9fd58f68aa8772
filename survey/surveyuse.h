#pragma once

#include <QString>
#include <QStringList>

namespace survey {

/// Tells other programs that a survey is open here, by a hidden file in its folder that is locked as long as this
/// stands and names the machine and the process. What a dead process left counts for nothing and is taken away.
class SurveyUse
{
public:
    SurveyUse() = default;
    ~SurveyUse();
    SurveyUse(const SurveyUse &) = delete;
    SurveyUse &operator=(const SurveyUse &) = delete;

    /// Who else has the survey open, as "process 1234 on host name"; then it is open here too. An empty folder only ends
    /// the use of the one before. Where nothing can be written nobody is told.
    QStringList open(const QString &surveyDirectory);

private:
    void close();

    QString m_path;
    int m_file = -1;
};

} // namespace survey
