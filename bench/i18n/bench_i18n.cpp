#include "files/Files.h"
#include "files/TextFile.h"
#include "i18n/Dictionary.h"
#include "i18n/LanguageCatalogue.h"
#include "i18n/LiteralTranslation.h"
#include "i18n/TranslationMemory.h"

#include <benchmark/benchmark.h>

#include <QTemporaryDir>

using namespace quillmere;

namespace {

constexpr int kDictionaryLines = 5000;

// The source with this number; every tenth is in other letters, so that both cases meet.
QString source(int number)
{
    const QString text = QStringLiteral("Message number %1 of the receiver").arg(number);
    return number % 10 == 0 ? text.toUpper() : text;
}

twins::Rows strings(int count)
{
    twins::Rows rows;
    for (int i = 0; i < count; ++i)
        rows.append({QString(), {source(i * 5), QString()}, i % 7 == 0});
    return rows;
}

// Lines from `first` on; every hundredth key comes twice.
QString dictionary(int first)
{
    QString text;
    for (int i = first; i < first + kDictionaryLines; ++i) {
        const int key = i % 100 == 99 ? i - 1 : i;
        text += QString(source(key).toLower() + u"[*]\u041F\u0435\u0440\u0435\u0432\u043E\u0434 " +
                        QString::number(i) + u"\r\n");
    }
    return text;
}

// The last argument is the number of dictionaries.
void fillQuick(benchmark::State &state)
{
    const twins::Rows before = strings(int(state.range(0)));
    QStringList dictionaries;
    for (int i = 0; i < state.range(1); ++i)
        dictionaries.append(dictionary(i * kDictionaryLines));
    ListRows rows = makeStringRows();
    for (auto _ : state) {
        state.PauseTiming();
        twins::Rows copy = before;
        for (ListRows::Row &row : copy)
            row.subItems.detach();
        rows.assign(std::move(copy));
        state.ResumeTiming();
        for (const QString &text : dictionaries)
            fillFromDictionary(rows, text);
    }
}

void fillStepByStep(benchmark::State &state)
{
    const twins::Rows before = strings(int(state.range(0)));
    const QString text = dictionary(0);
    for (auto _ : state) {
        twins::Rows rows = before;
        twins::fill(rows, text);
        benchmark::DoNotOptimize(rows.size());
    }
}

// A dictionary of about so many megabytes on disk, read and filled from.
void hugeDictionary(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("huge.txt"));
    const QString part = dictionary(0);
    Files().saveOwn(path, part.repeated(state.range(0) * 1000000 / part.toUtf8().size()),
                    Encoding{CodePage::Utf8});
    ListRows rows = makeStringRows();
    for (auto _ : state) {
        rows.assign(strings(1000));
        fillFromDictionary(rows, LoadFile(path));
    }
}

class LanguageFile
{
public:
    explicit LanguageFile(int count) : m_path(m_folder.filePath(QStringLiteral("language.xml")))
    {
        m_files.backups().setFolder(m_folder.filePath(QStringLiteral("backup")));
        twins::Rows all = strings(count);
        for (int i = 0; i < all.size(); ++i)
            all[i].subItems[1] = QStringLiteral(u"\u041F\u0435\u0440\u0435\u0432\u043E\u0434 %1").arg(i);
        rows.assign(all);
        save();
    }
    void open() { OpenLgXml(rows, LoadFile(m_path)); }
    void save()
    {
        m_files.saveOwn(m_path, languageFileText(QStringLiteral("N"), rows, {CodePage::Utf8}),
                        Encoding{CodePage::Utf8});
    }

    ListRows rows = makeStringRows();

private:
    QTemporaryDir m_folder;
    Files m_files;
    QString m_path;
};

void openLanguage(benchmark::State &state)
{
    LanguageFile file(int(state.range(0)));
    for (auto _ : state)
        file.open();
}

void saveLanguage(benchmark::State &state)
{
    LanguageFile file(int(state.range(0)));
    for (auto _ : state)
        file.save();
}

// A source among so many that are alike, half of them within reach: nothing can be passed over by its length.
void suggest(benchmark::State &state)
{
    auto memory =
        std::make_shared<TranslationMemory>(QStringLiteral("theme"), TranslationMemory::Kind::Language);
    for (int i = 0; i < state.range(0); ++i)
        memory->add(source(i).repeated(state.range(1)), QStringLiteral("Translation %1").arg(i), i);
    memory->makeIndex();
    int asked = 0;
    for (auto _ : state) {
        const QString text = QString(source(++asked * 7).repeated(state.range(1)) + u"s!");
        benchmark::DoNotOptimize(suggestionsFor(text, {memory}).size());
    }
}

void makeMemory(benchmark::State &state)
{
    const twins::Rows rows = strings(int(state.range(0)));
    for (auto _ : state) {
        TranslationMemory memory(QStringLiteral("theme"), TranslationMemory::Kind::Language);
        for (int i = 0; i < rows.size(); ++i)
            memory.add(rows[i].sub(1), u"x", i);
        memory.makeIndex();
        benchmark::DoNotOptimize(memory.count());
    }
}

} // namespace

BENCHMARK(suggest)->Args({20000, 1})->Args({20000, 10})->Args({200000, 1})->Unit(benchmark::kMillisecond);
BENCHMARK(makeMemory)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(fillQuick)->Args({1000, 1})->Args({20000, 10})->Unit(benchmark::kMillisecond);
BENCHMARK(fillStepByStep)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(hugeDictionary)->Arg(50)->Unit(benchmark::kMillisecond);
BENCHMARK(openLanguage)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(saveLanguage)->Arg(20000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
