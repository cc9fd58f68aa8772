#pragma once

#include <QString>
#include <QStringList>

/// Names of wells, logs, markers, templates, correlations, groups, surveys and files that a program may meet, and that are
/// no good file names, look like something else, or hardly differ from each other.
inline QStringList hostileNames()
{
    QStringList names;
    // Paths
    for (const char *name : {"15/9-F-1", "../x",  "../../x", "../../../../tmp/x",
                             "..",       ".",     "...",     "/etc/passwd",
                             "//x",      "x/",    "/",       "a/../b",
                             "./a",      "a/./b", "A\\B",    "..\\..\\x",
                             "C:\\x",    "C:",    "~",       "~root",
                             "$HOME",    "`id`",  "$(id)",   "a;b",
                             "a&b",      "a*",    "?",       "[a]"})
        names.append(QString::fromUtf8(name));
    // Separators of our files
    for (const char *name : {"a|b",  "|",           "a:b",        ":",   "a,b",    "a`b",   "a=b", "#a",  "a#b",
                             "!",    "a!b",         "--",         "%2F", "%2e%2e", "50%",   "%",   "%FF", "%00",
                             "a<b>", "<b>bold</b>", "\"quoted\"", "'a'", "&amp;",  "&name", "%1",  "%s%n"})
        names.append(QString::fromUtf8(name));
    // White space, line ends, control characters
    for (const char *name : {"a b", " a", "a ", "a.", ".a", "a..", "a\tb", "a\nb", "a\rb", "a\r\nb", "\x01",
                             "a\x1b[31mb", "a\x7F", "\xC2\xA0", "a\xC2\xA0", "\xE3\x80\x80", "\xE2\x80\xA8",
                             "a\xC2\x85"
                             "b"})
        names.append(QString::fromUtf8(name));
    names.append(QString::fromUtf16(u"a\0b", 3));
    names.append(QString::fromUtf16(u"a\0/../x", 7));
    // Other scripts, directions, characters made of several, none at all
    for (const char *name :
         {"\xD9\x85\xD8\xB1\xD8\xAD\xD8\xA8\xD8\xA7",
          "\xE2\x80\xAE"
          "abc",
          "a\xCC\x8A", "\xC3\xA5", "\xF0\x9F\x9B\xA2", "\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x94\xAC", "\xE4\xBA\x95",
          "a\xE2\x80\x8B", "\xE2\x80\x8B", "a\xEF\xBF\xBD"})
        names.append(QString::fromUtf8(name));
    names.append(QChar(0xFEFF) + QStringLiteral("a"));
    names.append(QString(QLatin1Char('a')) + QChar(0xD800));
    // Lengths
    for (const int length : {200, 240, 255, 256, 300})
        names.append(QString(length, QLatin1Char('n')));
    names.append(QString(299, QLatin1Char('n')) + QLatin1Char('m'));
    names.append(QString(150, QChar(0x00F8)));
    names.append(QString(300, QChar(0x00F8)));
    // Those that differ in case only
    for (const char *name : {"case", "Case", "CASE"})
        names.append(QString::fromUtf8(name));
    // Names of our own files and folders, and words that stand for nothing
    for (const char *name : {".lorva-abcDEF",
                             ".lorva-deleted",
                             ".lorva-swap-abcDEF",
                             ".lorva.lock",
                             ".lorva-survey-abcDEF",
                             "WLC",
                             "WellInfo",
                             "Global",
                             "global",
                             "%47lobal",
                             "CurveGroupTable",
                             "Correlations",
                             "Templates",
                             "Well_Markers_Info",
                             "properties.txt",
                             "Track_1",
                             ".omf",
                             ".survey",
                             "None",
                             "Default",
                             "Others",
                             "-999.25",
                             "nan",
                             "CON",
                             "nul.txt"})
        names.append(QString::fromUtf8(name));
    return names;
}
