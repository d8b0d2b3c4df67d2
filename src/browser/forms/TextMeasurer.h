#pragma once

#include "browser/MeasuredText.h"
#include "browser/PageFonts.h"
#include "files/Progress.h"

#include <QVariant>

#include <memory>

namespace quillmere {

class WebBrowser;

// Measures texts in a browser that nobody sees, as pages with the same sheet and the same fonts show them.
// The event loop runs meanwhile, without what the person does.
class TextMeasurer
{
public:
    // `sheet` sets the texts; see measuringPage.
    TextMeasurer(const QString &themeFolder, const QList<PageFont> &fonts, const QString &sheet);
    ~TextMeasurer();

    // A text that is too long, that keeps the browser longer than `patience`, and all texts beyond a number
    // that no theme has are not measured.
    TextMeasures measure(const QList<SetText> &texts, const Progress &progress = {});
    // How long the browser may take for some hundred texts, ms.
    void setPatience(int milliseconds) { m_patience = milliseconds; }

private:
    bool begin(TextMeasures &into);
    QVariant run(const QString &script);
    template <typename Condition>
    bool waitFor(Condition condition);

    QString m_folder, m_sheet;
    QList<PageFont> m_fonts;
    std::unique_ptr<WebBrowser> m_browser; // with the page and its fonts in it
    Progress m_progress;
    qsizetype m_done = 0, m_all = 0;
    int m_patience;
};

} // namespace quillmere
