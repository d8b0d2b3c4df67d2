#include "browser/forms/TextMeasurer.h"

#include "browser/TextScripts.h"
#include "browser/forms/WebBrowser.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineScript>

namespace quillmere {

namespace {

constexpr qsizetype kMostUnits = 10'000;        // of a text
constexpr qsizetype kMostTexts = 200'000;       // all together
constexpr qsizetype kMostTogether = 16'000'000; // units of them
constexpr qsizetype kBatch = 200, kBatchUnits = 20'000;
constexpr int kMostFailures = 3; // of batches
constexpr int kPatience = 10'000;
constexpr int kBetweenLooks = 20; // ms

} // namespace

TextMeasurer::TextMeasurer(const QString &themeFolder, const QList<PageFont> &fonts, const QString &sheet)
    : m_folder(themeFolder), m_sheet(sheet), m_fonts(fonts), m_patience(kPatience)
{
}

TextMeasurer::~TextMeasurer() = default;

TextMeasures TextMeasurer::measure(const QList<SetText> &texts, const Progress &progress)
{
    TextMeasures measures;
    measures.texts.reserve(std::min(texts.size(), kMostTexts));
    m_progress = progress;
    m_all = texts.size();
    int failures = 0;
    qsizetype together = 0;
    QList<SetText> batch;
    qsizetype units = 0;
    const auto measureBatch = [&] {
        QList<TextExtent> extents;
        if (!batch.isEmpty() && failures < kMostFailures) {
            if (m_browser || begin(measures))
                extents = extentsOf(run(measuringScript(batch)), batch.size());
            if (extents.isEmpty()) {
                m_browser.reset(); // it is dead, or at work for nobody
                ++failures;
            }
        }
        for (qsizetype i = 0; i < batch.size(); ++i)
            measures.texts.insert(batch.at(i),
                                  extents.isEmpty() ? std::nullopt : std::optional(extents.at(i)));
        batch.clear();
        units = 0;
    };
    for (m_done = 0; m_done < texts.size(); ++m_done) {
        const SetText &text = texts.at(m_done);
        if (text.text.size() > kMostUnits || m_done >= kMostTexts || together > kMostTogether) {
            measures.texts.insert(text, std::nullopt);
            continue;
        }
        batch.append(text);
        units += text.text.size();
        together += text.text.size();
        if (batch.size() >= kBatch || units >= kBatchUnits) {
            measureBatch();
            tell(m_progress, m_done, m_all);
        }
    }
    measureBatch();
    m_progress = {};
    return measures;
}

// A browser with the page in it and, as far as they can be loaded, the fonts.
bool TextMeasurer::begin(TextMeasures &into)
{
    m_browser = std::make_unique<WebBrowser>();
    m_browser->setThemeFolder(m_folder);
    m_browser->setFonts(m_fonts);
    bool isWritten = false;
    QObject::connect(m_browser.get(), &WebBrowser::written, [&isWritten] { isWritten = true; });
    m_browser->write(measuringPage(m_sheet));
    const bool isThere = waitFor([&] { return isWritten; });
    m_browser->disconnect();
    QString families;
    if (!isThere || !waitFor([&] { return !(families = run(familiesScript()).toString()).isEmpty(); }))
        return false;
    const QStringList names = families.split(u'\n', Qt::SkipEmptyParts);
    into.families = QSet<QString>(names.begin(), names.end());
    return true;
}

// What a script gives; invalid where the browser does not come to an end with it.
QVariant TextMeasurer::run(const QString &script)
{
    struct Answer
    {
        QVariant value;
        bool isThere = false;
    };
    const auto answer = std::make_shared<Answer>();
    m_browser->page()->runJavaScript(script, QWebEngineScript::ApplicationWorld,
                                     [answer](const QVariant &value) {
                                         *answer = {value, true};
                                     });
    waitFor([&] { return answer->isThere; });
    return answer->value;
}

// Nothing that the person does is worked off meanwhile, but for what the progress lets through.
template <typename Condition>
bool TextMeasurer::waitFor(Condition condition)
{
    QElapsedTimer since;
    since.start();
    while (!condition()) {
        if (since.elapsed() > m_patience)
            return false;
        QEventLoop loop;
        QTimer::singleShot(kBetweenLooks, &loop, &QEventLoop::quit);
        loop.processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
        tell(m_progress, m_done, m_all);
    }
    return true;
}

} // namespace quillmere
