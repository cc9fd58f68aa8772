#include "survey/fileproblems.h"

namespace survey {

namespace {

constexpr int maximumProblems = 1000;

} // namespace

bool FileProblems::add(const QString &path, const QString &problem)
{
    const QString sentence = QStringLiteral("%1: %2.").arg(path, problem);
    for (Problem &known : m_problems) {
        if (known.sentence == sentence) {
            known.state = fileState(path);
            return false;
        }
    }
    if (m_problems.size() >= maximumProblems)
        return false;
    m_problems.append({path, sentence, fileState(path)});
    return true;
}

void FileProblems::forgetChangedFiles()
{
    const auto isChanged = [](const Problem &problem) {
        return !fileState(problem.path).hasSameStamp(problem.state);
    };
    m_problems.erase(std::remove_if(m_problems.begin(), m_problems.end(), isChanged), m_problems.end());
}

QStringList FileProblems::sentences()
{
    forgetChangedFiles();
    QStringList sentences;
    for (const Problem &problem : qAsConst(m_problems))
        sentences.append(problem.sentence);
    return sentences;
}

QStringList FileProblems::sentencesOf(const QString &path)
{
    QStringList sentences;
    for (const Problem &problem : qAsConst(m_problems))
        if (problem.path == path && fileState(path).hasSameStamp(problem.state))
            sentences.append(problem.sentence);
    return sentences;
}

} // namespace survey
