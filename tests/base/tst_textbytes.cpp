#include "base/textbytes.h"
#include "support/testmain.h"

namespace {

QVector<QByteArray> linesOf(const QByteArray &bytes, int atMost = 1000)
{
    QVector<QByteArray> lines;
    base::forEachLine(bytes.constData(), bytes.constData() + bytes.size(), [&](const char *begin, const char *end) {
        lines.append(QByteArray(begin, static_cast<int>(end - begin)));
        return lines.size() < atMost;
    });
    return lines;
}

} // namespace

class TestTextBytes : public QObject
{
    Q_OBJECT

private slots:
    void decodesText_data();
    void decodesText();
    void decodesEveryByteOfWindows1252();
    void splitsLines_data();
    void splitsLines();
    void stopsWhereTheCallerStops();
};

void TestTextBytes::decodesText_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    const QString word = QString::fromUtf8("Brønn 15/9");
    QTest::newRow("empty") << QByteArray() << QString();
    QTest::newRow("ascii") << QByteArray("abc") << QStringLiteral("abc");
    QTest::newRow("UTF-8") << QByteArray("Br\xC3\xB8nn 15/9") << word;
    QTest::newRow("UTF-8 with mark") << QByteArray("\xEF\xBB\xBF"
                                                   "Br\xC3\xB8nn 15/9")
                                     << word;
    QTest::newRow("mark alone") << QByteArray("\xEF\xBB\xBF") << QString();
    QTest::newRow("UTF-16 little endian") << QByteArray("\xFF\xFE"
                                                        "B\0r\0\xF8\0n\0n\0 \0001\0005\0/\0009\0",
                                                        22)
                                          << word;
    QTest::newRow("UTF-16 big endian") << QByteArray("\xFE\xFF\0B\0r\0\xF8\0n\0n\0 \0001\0005\0/\0009", 22) << word;
    QTest::newRow("UTF-16 surrogates") << QByteArray("\xFF\xFE\x3D\xD8\x00\xDE", 6)
                                       << QString::fromUtf8("\xF0\x9F\x98\x80");
    QTest::newRow("Windows-1252") << QByteArray("Br\xF8nn 15/9") << word;
    QTest::newRow("Windows-1252 euro and quotes")
        << QByteArray("\x80 \x93x\x94") << QString::fromUtf8("\xE2\x82\xAC \xE2\x80\x9Cx\xE2\x80\x9D");
    QTest::newRow("cut UTF-8") << QByteArray("abc\xC3") << QString::fromUtf8("abc\xC3\x83");
    QTest::newRow("overlong UTF-8") << QByteArray("\xC0\xAF") << QString::fromUtf8("\xC3\x80\xC2\xAF");
    QTest::newRow("surrogate in UTF-8") << QByteArray("\xED\xA0\x80")
                                        << QString::fromUtf8("\xC3\xAD\xC2\xA0\xE2\x82\xAC");
    QTest::newRow("NUL kept") << QByteArray("a\0b", 3)
                              << QString(QStringLiteral("a") + QChar(0) + QStringLiteral("b"));
    QTest::newRow("four-byte UTF-8") << QByteArray("\xF0\x9F\x98\x80") << QString::fromUtf8("\xF0\x9F\x98\x80");
}

void TestTextBytes::decodesText()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    QCOMPARE(base::decodeText(bytes), text);
}

void TestTextBytes::decodesEveryByteOfWindows1252()
{
    // Bytes that the code page assigns to other characters than Latin-1 does.
    const QString special = QString::fromUtf8("€‚ƒ„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ");
    QString found;
    for (int byte = 0x80; byte < 0x100; ++byte) {
        const QString text = base::decodeText(QByteArray(1, static_cast<char>(byte)));
        QCOMPARE(text.size(), 1);
        if (text.at(0).unicode() != byte)
            found += text;
        else
            QVERIFY(byte >= 0xA0 || byte == 0x81 || byte == 0x8D || byte == 0x8F || byte == 0x90 || byte == 0x9D);
    }
    QCOMPARE(found, special);
}

void TestTextBytes::splitsLines_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QVector<QByteArray>>("lines");
    using Lines = QVector<QByteArray>;
    QTest::newRow("empty") << QByteArray() << Lines{};
    QTest::newRow("LF") << QByteArray("a\nb\n") << Lines{"a", "b"};
    QTest::newRow("CRLF") << QByteArray("a\r\nb\r\n") << Lines{"a", "b"};
    QTest::newRow("CR") << QByteArray("a\rb\r") << Lines{"a", "b"};
    QTest::newRow("mixed") << QByteArray("a\nb\r\nc\rd\n") << Lines{"a", "b", "c", "d"};
    QTest::newRow("no final line end") << QByteArray("a\nb") << Lines{"a", "b"};
    QTest::newRow("empty lines") << QByteArray("\n\r\n\r\ra") << Lines{"", "", "", "", "a"};
    QTest::newRow("LF CR is two ends") << QByteArray("a\n\rb") << Lines{"a", "", "b"};
    QTest::newRow("CR at the very end") << QByteArray("a\r") << Lines{"a"};
    QTest::newRow("one line") << QByteArray("a") << Lines{"a"};
    QTest::newRow("line end alone") << QByteArray("\n") << Lines{""};
}

void TestTextBytes::splitsLines()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QVector<QByteArray>, lines);
    QCOMPARE(linesOf(bytes), lines);
    QVector<QString> texts;
    for (const QByteArray &line : lines)
        texts.append(QString::fromLatin1(line));
    QCOMPARE(base::splitLines(QString::fromLatin1(bytes)), texts);
}

void TestTextBytes::stopsWhereTheCallerStops()
{
    QCOMPARE(linesOf("a\nb\nc\n", 2), (QVector<QByteArray>{"a", "b"}));
}

LORVA_TEST_MAIN(TestTextBytes)
#include "tst_textbytes.moc"
