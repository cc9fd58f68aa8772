#pragma once

#include "base/filelock.h"

#include <QString>

#include <optional>

namespace survey {

/// The right to write in the wells' folder of a survey, which one writer at a time has, in whatever process: what is
/// read while it stands is what is there when it is written.
class SurveyWrite
{
public:
    explicit SurveyWrite(const QString &surveyDirectory);

    bool ok() const { return m_problem.isEmpty(); }
    /// Why nothing may be written, as a sentence.
    const QString &problem() const { return m_problem; }

private:
    std::optional<base::FolderLock> m_lock;
    QString m_problem;
};

} // namespace survey
