// Makes the manual as a PDF of its pages and pictures: lorva-manual PAGE_DIR PICTURE_DIR PDF_FILE

#include "programs/manualpages.h"

#include <QFileInfo>
#include <QGuiApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    if (argc != 4) {
        std::fprintf(stderr, "Usage: lorva-manual PAGE_DIR PICTURE_DIR PDF_FILE\n");
        return 2;
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen"); // it shows no window
    const QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationVersion(QStringLiteral("0.0"));
    const QString pages = QFile::decodeName(argv[1]);
    const QString pictures = QFile::decodeName(argv[2]);
    const QString file = QFile::decodeName(argv[3]);

    const QVector<programs::ManualChapter> chapters = programs::readManual(pages);
    bool isComplete = !chapters.isEmpty();
    if (!isComplete)
        std::fprintf(stderr, "There is no manual in %s.\n", qUtf8Printable(pages));
    for (const programs::ManualChapter &chapter : chapters)
        for (const QString &picture : programs::picturesOf(chapter))
            if (!QFileInfo::exists(pictures + QLatin1Char('/') + picture)) {
                std::fprintf(stderr, "%s shows %s, which is not in %s.\n", qUtf8Printable(chapter.file),
                             qUtf8Printable(picture), qUtf8Printable(pictures));
                isComplete = false;
            }
    if (!isComplete)
        return 1;
    const QString problem = programs::writeManual(chapters, pictures, file);
    if (!problem.isEmpty()) {
        std::fprintf(stderr, "Cannot write %s: %s.\n", qUtf8Printable(file), qUtf8Printable(problem));
        return 1;
    }
    std::printf("%s\n", qUtf8Printable(file));
    return 0;
}
