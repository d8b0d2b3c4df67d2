#include "i18n/LanguageNames.h"
#include "i18n/LiteralSuggestions.h"
#include "i18n/TypedTranslation.h"

#include <QRandomGenerator>
#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

QString asText(const QList<Suggestion> &suggestions)
{
    QString text;
    for (const Suggestion &each : suggestions)
        text +=
            u"%1 %2 [%3] %4%5\n"_s.arg(each.percent)
                .arg(each.translation, each.source, each.origin, each.isDisputed ? u" disputed"_s : u""_s);
    return text;
}

TranslationMemories memoriesOf(const QList<twins::Remembered> &all)
{
    TranslationMemories memories;
    std::shared_ptr<TranslationMemory> memory;
    const auto finish = [&] {
        if (!memory)
            return;
        memory->makeIndex();
        memories.append(memory);
    };
    QString origin;
    for (const twins::Remembered &each : all) {
        if (!memory || each.origin != origin) {
            finish();
            origin = each.origin;
            memory = std::make_shared<TranslationMemory>(origin, each.isOfDictionary
                                                                     ? TranslationMemory::Kind::Dictionary
                                                                     : TranslationMemory::Kind::Language);
        }
        memory->add(each.source, each.translation, each.row);
    }
    finish();
    return memories;
}

} // namespace

class TestSuggestions : public QObject
{
    Q_OBJECT

private slots:
    void similar_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("expected");
        QTest::newRow("same, in other letters, disputed")
            << u"menu"_s
            << u"100 Karte [menu] b disputed\n99 Menue [Menu] a disputed\n99 Speisekarte [Menu] theme\n"_s;
        QTest::newRow("a letter less") << u"Channel lis"_s << u"91 Senderliste [Channel list] a\n"_s;
        QTest::newRow("just similar enough") << u"abcd"_s << u"75 x [abce] a\n"_s;
        QTest::newRow("not any more") << u"abx"_s << QString();
        QTest::newRow("the row that asks") << u"own"_s << QString();
        QTest::newRow("nothing") << QString() << QString();
    }

    void similar()
    {
        QFETCH(const QString, source);
        auto a = std::make_shared<TranslationMemory>(u"a"_s, TranslationMemory::Kind::Dictionary);
        a->addDictionary(
            u"Menu[*]Menue\r\nMENU[*]x\r\nChannel list[*]Senderliste\r\nabce[*]x\r\nabcd[*] \r\n"_s);
        auto b = std::make_shared<TranslationMemory>(u"b"_s, TranslationMemory::Kind::Dictionary);
        b->addDictionary(u"menu[*]Karte"_s);
        auto theme = std::make_shared<TranslationMemory>(u"theme"_s, TranslationMemory::Kind::Language);
        theme->add(u"own", u"own", 0);
        theme->add(u"Menu", u"Speisekarte", 1);
        for (const auto &memory : {a, b, theme})
            memory->makeIndex();
        QTEST(asText(suggestionsFor(source, {a, b, theme}, theme.get(), 0)), "expected");
    }

    // Whatever the texts, it is the slow form that the quick one says the same as.
    void sameAsStepByStep()
    {
        QRandomGenerator random(15);
        const QString letters = u"abAB e\u00E4\u00C4\u0436"_s;
        const auto any = [&](int most) {
            QString text;
            for (int i = int(random.bounded(1, most)); i > 0; --i)
                text += letters[random.bounded(int(letters.size()))];
            return text;
        };
        int found = 0;
        for (int round = 0; round < 400; ++round) {
            const int longest = round % 3 == 0 ? 5 : round % 3 == 1 ? 16 : 90;
            QString source = any(longest);
            if (round % 40 == 0)
                source = source.repeated(100).left(kLongestSimilar - 1 + int(random.bounded(3)));
            QList<twins::Remembered> all;
            const int count = source.size() > 200 ? 12 : 60;
            for (int i = 0; i < count; ++i) {
                QString other = random.bounded(4) == 0 ? any(longest) : source;
                for (int steps = int(random.bounded(1 + int(source.size()) / 3)); steps > 0; --steps) {
                    const qsizetype at = random.bounded(int(other.size()) + 1);
                    const int what = int(random.bounded(3));
                    if (what == 0)
                        other.insert(at, letters[random.bounded(int(letters.size()))]);
                    else if (what == 1)
                        other.remove(at, 1);
                    else if (at < other.size())
                        other[at] = letters[random.bounded(int(letters.size()))];
                }
                if (other.isEmpty())
                    continue;
                const int memory = i * 3 / count;
                all.append({other, u"ABCDEFGHIJKLMNOPQRST "_s[random.bounded(21)], QString::number(memory),
                            memory < 2, memory == 2 ? i : -1});
            }
            const int ownRow = int(random.bounded(count));
            const TranslationMemories memories = memoriesOf(all);
            const QList<Suggestion> quick = suggestionsFor(source, memories, memories.last().get(), ownRow);
            QCOMPARE(asText(quick), asText(twins::suggestionsFor(source, all, ownRow)));
            found += int(quick.size());
        }
        QVERIFY2(found > 1000, qPrintable(QString::number(found)));
    }

    void dictionariesOfALanguage()
    {
        const std::tuple<QStringView, QStringView, bool> pairs[] = {
            {u"German", u"German", true},      {u"Deutsch.old", u"ger", true},
            {u"Arabic", u"German", false},     {u"Indonesia", u"IND", true},
            {u"Indonesia", u"tr", false},      {u"office", u"German", true},
            {u"German", u"Klingonish", false}, {u"Klingonish", u"klingonish 2", true}};
        for (const auto &[dictionary, language, may] : pairs)
            QVERIFY2(mayTranslateInto(dictionary, language) == may, qPrintable(dictionary.toString()));
        const std::tuple<QStringView, QStringView, QString> files[] = {
            {u"German", u"de_AT", {}},  {u"ger", u"Deutsch", {}}, {u"German", u"tr", u"Turkish"_s},
            {u"Klingonish", u"tr", {}}, {u"German", u"", {}},     {u"German", u"charset=x", {}}};
        for (const auto &[language, said, other] : files)
            QCOMPARE(otherThan(language, said), other);
    }

    void lineEnds()
    {
        const ListRows::Row none = {{}, {u"a"_s, u"b"_s}}, lf = {{}, {u"a\nb"_s, u""_s}};
        const ListRows::Row crlf = {{}, {u"a"_s, u"b\r\nc"_s}};
        QCOMPARE(inRow(u"x\ny"_s, none), u"x\r\ny"_s);
        QCOMPARE(inRow(u"x\ny"_s, lf), u"x\ny"_s);
        QCOMPARE(inRow(u"x\ny"_s, crlf), u"x\r\ny"_s);
        QVERIFY(reasonAgainst(u"a & \"b\"").isEmpty() && !reasonAgainst(u">").isEmpty());
    }
};

QTEST_APPLESS_MAIN(TestSuggestions)
#include "tst_suggestions.moc"
