#include "platform/RunTimeError.h"
#include "platform/TestFiles.h"
#include "platform/TextFile.h"

#include <QRandomGenerator>
#include <QTest>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace quillmere;

class TestTextFile : public QObject
{
    Q_OBJECT

private slots:
    void decode_data();
    void decode();
    void everyByteComesBack();
    void randomBytesComeBack();
    void encode_data();
    void encode();
    void unfit_data();
    void unfit();
    void load();
    void loadDoesNotWait();
};

void TestTextFile::decode_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("page");
    const auto row = [](const char *name, const QByteArray &bytes, const QString &text, const char *page) {
        QTest::newRow(name) << bytes << text << page;
    };
    row("empty", "", QString(), "ASCII");
    row("ascii", "<a>\r\n", QStringLiteral("<a>\r\n"), "ASCII");
    row("nul", QByteArray("a\0b", 3), QStringLiteral("a%1b").arg(QChar(QChar::Null)), "ASCII");
    row("utf-8", "\xC3\xA9", QStringLiteral("\u00E9"), "UTF-8");
    row("byte order mark", "\xEF\xBB\xBF<a>", QStringLiteral("\uFEFF<a>"), "UTF-8");
    row("two byte order marks", "\xEF\xBB\xBF\xEF\xBB\xBF", QStringLiteral("\uFEFF\uFEFF"), "UTF-8");
    row("mark inside", "a\xEF\xBB\xBF", QStringLiteral("a\uFEFF"), "UTF-8");
    row("beyond the first plane", "\xF0\x9F\x98\x80", QStringLiteral("\U0001F600"), "UTF-8");
    row("no character", "\xEF\xBF\xBE", QString(QChar(0xFFFE)), "UTF-8");
    row("one byte", "\xE9", QStringLiteral("\u00E9"), "Windows-1252");
    row("euro", "\x80\x9F", QStringLiteral("\u20AC\u0178"), "Windows-1252");
    row("undefined byte", "\x81", QString(QChar(0x81)), "Windows-1252");
    row("cut short", "\xC3", QStringLiteral("\u00C3"), "Windows-1252");
    row("overlong", "\xC0\x80", QStringLiteral("\u00C0\u20AC"), "Windows-1252");
    row("half a pair", "\xED\xA0\x80", QStringLiteral("\u00ED\u00A0\u20AC"), "Windows-1252");
    row("beyond the last plane", "\xF4\x90\x80\x80", QStringLiteral("\u00F4%1\u20AC\u20AC").arg(QChar(0x90)),
        "Windows-1252");
}

void TestTextFile::decode()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    QFETCH(QString, page);
    const DecodedText decoded = decodeText(bytes, CodePageRule::Automatic);
    QCOMPARE(decoded.text, text);
    QCOMPARE(codePageName(decoded.page), page);
    QCOMPARE(encodeText(decoded.text, decoded.page, CodePageRule::Automatic), bytes);
    const DecodedText single = decodeText(bytes, CodePageRule::Windows1252);
    QCOMPARE(single.text.size(), bytes.size());
    QCOMPARE(encodeText(single.text, single.page, CodePageRule::Windows1252), bytes);
}

void TestTextFile::everyByteComesBack()
{
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const QByteArray bytes = QByteArray(1, char(first)) + char(second);
            const DecodedText decoded = decodeText(bytes);
            QCOMPARE(encodeText(decoded.text, decoded.page), bytes);
        }
    }
}

void TestTextFile::randomBytesComeBack()
{
    // Pieces that are, or nearly are, UTF-8 meet each other far more often than random bytes would.
    const QByteArray pieces[] = {
        "<a>",  "\r\n",         "\xEF\xBB\xBF", "\xC3\xA9",     "\xE2\x82\xAC",     "\xF0\x9F\x98",
        "\x80", "\xED\xB0\x80", "\xFF\xFE",     "\xEF\xBF\xBD", "\xF4\x8F\xBF\xBF", QByteArray(1, '\0'),
        "\x8D", "\xC2",         "\xE9"};
    QRandomGenerator random(20);
    for (int round = 0; round < 20000; ++round) {
        QByteArray bytes;
        for (int i = random.bounded(8); i > 0; --i)
            bytes += random.bounded(4) == 0 ? QByteArray(1, char(random.bounded(256)))
                                            : pieces[random.bounded(int(std::size(pieces)))];
        for (CodePageRule rule : {CodePageRule::Automatic, CodePageRule::Windows1252}) {
            const DecodedText decoded = decodeText(bytes, rule);
            QCOMPARE(encodeText(decoded.text, decoded.page, rule).toHex(), bytes.toHex());
        }
    }
}

void TestTextFile::encode_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<CodePage>("page");
    QTest::addColumn<QByteArray>("bytes");
    const QString accent = QStringLiteral("\u00E9");
    QTest::newRow("new file takes one byte") << accent << CodePage::Ascii << QByteArray("\xE9");
    QTest::newRow("new file with a letter too many")
        << accent + QChar(0x416) << CodePage::Ascii << QByteArray("\xC3\xA9\xD0\x96");
    QTest::newRow("utf-8 stays") << accent << CodePage::Utf8 << QByteArray("\xC3\xA9");
    QTest::newRow("one byte gives way")
        << accent + QChar(0x416) << CodePage::Windows1252 << QByteArray("\xC3\xA9\xD0\x96");
    QTest::newRow("control that is no byte")
        << QString(QChar(0x80)) << CodePage::Windows1252 << QByteArray("\xC2\x80");
    QTest::newRow("one byte would be read as utf-8")
        << QStringLiteral("\u00C3\u00A9") << CodePage::Windows1252 << QByteArray("\xC3\x83\xC2\xA9");
}

void TestTextFile::encode()
{
    QFETCH(QString, text);
    QFETCH(CodePage, page);
    QFETCH(QByteArray, bytes);
    QCOMPARE(encodeText(text, page, CodePageRule::Automatic), bytes);
    QCOMPARE(decodeText(bytes, CodePageRule::Automatic).text, text);
}

void TestTextFile::unfit_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<CodePageRule>("rule");
    QTest::addColumn<QString>("letter");
    QTest::addColumn<QString>("line");
    const CodePageRule single = CodePageRule::Windows1252;
    QTest::newRow("cyrillic") << QStringLiteral("a\r\nb\r\n\u0416") << single << "\u0416\" (U+0416)"
                              << "line 3 ";
    QTest::newRow("emoji") << QStringLiteral("\U0001F600\n") << single << "\U0001F600\" (U+1F600)"
                           << "line 1 ";
    QTest::newRow("half a pair") << QStringLiteral("a\n") + QChar(0xD800) << CodePageRule::Automatic
                                 << "(U+D800)"
                                 << "line 2 ";
    QTest::newRow("halves in the wrong order")
        << QString(QChar(0xDC00)) + QChar(0xD800) << CodePageRule::Automatic << "(U+DC00)"
        << "line 1 ";
}

void TestTextFile::unfit()
{
    QFETCH(QString, text);
    QFETCH(CodePageRule, rule);
    QFETCH(QString, letter);
    QFETCH(QString, line);
    QString message;
    try {
        encodeText(text, CodePage::Utf8, rule);
    } catch (const RunTimeError &error) {
        message = error.message();
    }
    QVERIFY2(message.contains(letter) && message.contains(line), qPrintable(message));
}

void TestTextFile::load()
{
    const TestFiles files;
    const QString path = files.write(QStringLiteral("Sub/A.xml"), "\xEF\xBB\xBF\xC3\xA9");
    QCOMPARE(LoadFile(path), QStringLiteral("\uFEFF\u00E9"));
    QCOMPARE(LoadFile(files.folder() + QStringLiteral("\\sub\\a.XML")), QStringLiteral("\uFEFF\u00E9"));
    QCOMPARE(LoadFile(files.path(QStringLiteral("none.xml"))), QString());
    QCOMPARE(LoadFile(files.path(QStringLiteral("Sub"))), QString());
    QCOMPARE(LoadFile({}), QString());
    setCodePageRule(CodePageRule::Windows1252);
    const DecodedText single = LoadText(path);
    setCodePageRule(CodePageRule::Automatic);
    QCOMPARE(single.text.size(), 5);
    QCOMPARE(single.page, CodePage::Windows1252);
}

void TestTextFile::loadDoesNotWait()
{
#ifdef Q_OS_UNIX
    const TestFiles files;
    const QString pipe = files.path(QStringLiteral("pipe.xml"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QCOMPARE(LoadFile(pipe), QString());
    QCOMPARE(LoadFile(QStringLiteral("/dev/zero")), QString());
#endif
}

QTEST_APPLESS_MAIN(TestTextFile)
#include "tst_textfile.moc"
