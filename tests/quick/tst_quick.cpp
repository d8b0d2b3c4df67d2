#include "markup/Matching.h"
#include "quick/FuzzyMatch.h"
#include "quick/QuickList.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

int scoreOf(const QList<int> &places, quint64 wordStarts)
{
    int score = 0;
    for (qsizetype i = 0; i < places.size(); ++i) {
        score += 1 + (places[i] == 0 ? 2 : 0) + (wordStarts >> places[i] & 1 ? 8 : 0);
        if (i > 0)
            score += places[i] == places[i - 1] + 1 ? 9 : -4;
    }
    return score;
}

// The literal twin: tries every way.
std::optional<int> bestOfAll(QStringView pattern, QStringView text, quint64 wordStarts,
                             const QList<int> &places = {})
{
    if (places.size() == pattern.size())
        return scoreOf(places, wordStarts);
    std::optional<int> best;
    for (int at = places.isEmpty() ? 0 : places.last() + 1; at < text.size(); ++at) {
        if (text[at] != pattern[places.size()])
            continue;
        const auto score = bestOfAll(pattern, text, wordStarts, places + QList<int>{at});
        if (score && (!best || *score > *best))
            best = score;
    }
    return best;
}

QString randomText(QRandomGenerator &random, int most)
{
    static const QString letters = u"aabBc_ 1\u00e4"_s;
    QString text;
    for (int i = int(random.bounded(most + 1)); i > 0; --i)
        text += letters[int(random.bounded(int(letters.size())))];
    return text;
}

QuickEntry entry(QuickEntry::Kind kind, const QString &text)
{
    return {kind, text, {}, 0};
}

} // namespace

class TestQuick : public QObject
{
    Q_OBJECT

private slots:
    void likeTheTwin()
    {
        QRandomGenerator random(20261122);
        for (int round = 0; round < 20000; ++round) {
            const QString text = randomText(random, 12);
            const QString folded = foldedText(text), pattern = foldedText(randomText(random, 4));
            const quint64 starts = wordStartsOf(text);
            const auto score = fuzzyScore(pattern, folded, starts);
            QCOMPARE(score, bestOfAll(pattern, folded, starts));
            QCOMPARE(hasLettersInOrder(pattern, folded), score.has_value());
            const QList<int> places = fuzzyPlaces(pattern, folded, starts);
            QCOMPARE(places.size(), score ? pattern.size() : 0);
            if (!score)
                continue;
            QCOMPARE(scoreOf(places, starts), *score);
            for (qsizetype i = 0; i < places.size(); ++i)
                QCOMPARE(folded[places[i]], pattern[i]);
        }
    }

    void bestFirst_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("found");
        QTest::newRow("words") << u"mm"_s << u"wnd_main_menu summer"_s;
        QTest::newRow("beginning") << u"Sum"_s << u"summer"_s;
        QTest::newRow("capitals") << u"bg"_s << u"bg_long BlueGreen big"_s;
        QTest::newRow("blanks do not count") << u" main menu "_s << u"wnd_main_menu"_s;
        QTest::newRow("shorter first") << u"b"_s << u"big bg_long BlueGreen"_s;
        QTest::newRow("nothing") << u"xyz"_s << QString();
        QTest::newRow("commands in their order")
            << u">fi"_s << u"File > Save File > Exit Widget > Select No File"_s;
        QTest::newRow("a word before scattered letters")
            << u">win"_s << u"Tool > Search Windows... Widget > Select No File"_s;
        QTest::newRow("a command is no name") << u"Save"_s << QString();
    }

    void bestFirst()
    {
        QFETCH(const QString, typed);
        QuickList list;
        list.assign(m_entries);
        QStringList found;
        for (const int number : list.matching(typed, 100))
            found.append(list.entries().at(number).text);
        QTEST(found.join(u' '), "found");
    }

    void usedLatelyAbove()
    {
        QuickList list;
        list.setUsed({QuickList::nameOf(m_entries[2]), QuickList::nameOf(m_entries[1])});
        list.assign(m_entries);
        QCOMPARE(list.matching({}, 3), (QList<int>{2, 1, 0}));
        QCOMPARE(list.matching(u"s"_s, 1), QList<int>{1});
    }

    void ownCaptionFirst()
    {
        QuickList list;
        list.assign({entry(QuickEntry::Kind::Command, u"View > Light and Dark > Light"_s),
                     entry(QuickEntry::Kind::Command, u"View > Light and Dark > Dark"_s)});
        QCOMPARE(list.matching(u">dark"_s, 1), QList<int>{1});
    }

    // A key more only looks at what fitted before.
    void keyByKey()
    {
        QRandomGenerator random(7);
        QList<QuickEntry> entries;
        for (int i = 0; i < 300; ++i)
            entries.append(entry(i % 9 == 0 ? QuickEntry::Kind::Command : QuickEntry::Kind(i % 8),
                                 randomText(random, 9)));
        QuickList typed;
        typed.assign(entries);
        for (int round = 0; round < 200; ++round) {
            QString pattern = random.bounded(4) == 0 ? u">"_s : QString();
            for (int key = 0; key < 5; ++key) {
                QuickList anew;
                anew.assign(entries);
                int all = 0, allAnew = 0;
                QCOMPARE(typed.matching(pattern, 20, &all), anew.matching(pattern, 20, &allAnew));
                QCOMPARE(all, allAnew);
                pattern += randomText(random, 1);
            }
        }
    }

private:
    const QList<QuickEntry> m_entries = {entry(QuickEntry::Kind::Window, u"wnd_main_menu"_s),
                                         entry(QuickEntry::Kind::Image, u"summer"_s),
                                         entry(QuickEntry::Kind::Colour, u"BlueGreen"_s),
                                         entry(QuickEntry::Kind::Colour, u"bg_long"_s),
                                         entry(QuickEntry::Kind::Font, u"big"_s),
                                         entry(QuickEntry::Kind::Command, u"File > Save"_s),
                                         entry(QuickEntry::Kind::Command, u"File > Exit"_s),
                                         entry(QuickEntry::Kind::Command, u"Widget > Select No File"_s),
                                         entry(QuickEntry::Kind::Command, u"Tool > Search Windows..."_s)};
};

QTEST_GUILESS_MAIN(TestQuick)
#include "tst_quick.moc"
