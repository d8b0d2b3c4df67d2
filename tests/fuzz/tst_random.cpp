#include "Fuzz.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTest>

#include <csignal>

// The fuzz targets, each under a name of its own, on random texts put together from the tokens in random.txt:
// what holds for any input is looked at without clang too.
#define X(name) void fuzz_##name(const Input &input);
RANDOM_TARGETS
#undef X

using Target = void (*)(const Input &);
Q_DECLARE_METATYPE(Target)

namespace {

QByteArray input; // that is under way

void tellInput(int)
{
    std::fprintf(stderr, "with the input: {%s}\n", input.constData());
}

using Tokens = std::pair<int, QStringList>; // how many at most, and which

// A line of random.txt.
struct Recipe
{
    explicit Recipe(const QString &line)
    {
        rounds = line.section(u' ', 1, 1).toInt();
        for (const QString &part : line.section(u' ', 2).split(QStringLiteral("%%"))) {
            parts.append(QList<Tokens>());
            for (const QString &row : part.split(QStringLiteral("&&")))
                parts.last().append(
                    {row.section(u':', 0, 0).toInt(), row.section(u':', 1).split(QChar(0xA6))});
        }
    }

    QByteArray next(QRandomGenerator &random) const
    {
        QStringList texts;
        for (const QList<Tokens> &part : parts) {
            texts.append(QString());
            for (const auto &[most, tokens] : part) {
                for (int count = random.bounded(most + 1); count > 0; --count)
                    texts.last() += tokens[random.bounded(int(tokens.size()))];
            }
        }
        return texts.join(QStringLiteral("%%")).toUtf8();
    }

    int rounds;
    QList<QList<Tokens>> parts;
};

// "\\r", "\\n", "\\t" and "\\uXXXX" are what they are in a program.
QString unescaped(QString text)
{
    for (const auto &[letter, unit] : {std::pair(u'r', u'\r'), {u'n', u'\n'}, {u't', u'\t'}})
        text.replace(QString(u'\\') + letter, QString(QChar(unit)));
    for (qsizetype at = text.indexOf(u"\\u"); at >= 0; at = text.indexOf(u"\\u", at))
        text.replace(at, 6, QChar(text.mid(at + 2, 4).toUShort(nullptr, 16)));
    return text;
}

QList<Recipe> recipesOf(const QString &target)
{
    QFile file(QStringLiteral(RECIPES));
    QList<Recipe> recipes;
    if (file.open(QIODevice::ReadOnly)) {
        for (const QString &line : QString::fromUtf8(file.readAll()).split(u'\n')) {
            if (line.startsWith(QString(target + u' ')))
                recipes.append(Recipe(unescaped(line)));
        }
    }
    return recipes;
}

} // namespace

class TestRandom : public QObject
{
    Q_OBJECT

private slots:
    void holds_data()
    {
        QTest::addColumn<Target>("fuzz");
#define X(name) QTest::newRow(#name) << Target(fuzz_##name);
        RANDOM_TARGETS
#undef X
    }

    void holds()
    {
        QFETCH(Target, fuzz);
        const QList<Recipe> recipes = recipesOf(QString::fromLatin1(QTest::currentDataTag()));
        QVERIFY(!recipes.isEmpty());
        std::signal(SIGABRT, tellInput); // a promise that is not kept aborts
        QRandomGenerator random(5);
        for (const Recipe &recipe : recipes) {
            for (int round = 0; round < recipe.rounds; ++round) {
                input = recipe.next(random);
                fuzz(Input(reinterpret_cast<const uint8_t *>(input.constData()), size_t(input.size())));
            }
        }
    }
};

QTEST_APPLESS_MAIN(TestRandom)
#include "tst_random.moc"
