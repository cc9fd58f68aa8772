#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <clocale>
#include <cstring>

namespace testing_support {

/// Puts a German locale (decimal comma) in force for its lifetime. It is built into a temporary folder, since few
/// machines have one installed.
class CommaLocale
{
public:
    CommaLocale()
        : m_previous(std::setlocale(LC_ALL, nullptr))
        , m_previousPath(qgetenv("LOCPATH"))
    {
        const QString target = m_folder.filePath(QStringLiteral("de_DE.UTF-8"));
        QProcess::execute(
            QStringLiteral("localedef"),
            {QStringLiteral("-i"), QStringLiteral("de_DE"), QStringLiteral("-f"), QStringLiteral("UTF-8"), target});
        qputenv("LOCPATH", m_folder.path().toLocal8Bit());
        std::setlocale(LC_ALL, "de_DE.UTF-8");
    }
    ~CommaLocale()
    {
        if (m_previousPath.isEmpty())
            qunsetenv("LOCPATH");
        else
            qputenv("LOCPATH", m_previousPath);
        std::setlocale(LC_ALL, m_previous.constData());
    }
    CommaLocale(const CommaLocale &) = delete;
    CommaLocale &operator=(const CommaLocale &) = delete;

    /// False where no such locale could be made.
    bool isInForce() const { return std::strcmp(std::localeconv()->decimal_point, ",") == 0; }

private:
    QTemporaryDir m_folder;
    QByteArray m_previous;
    QByteArray m_previousPath;
};

} // namespace testing_support
