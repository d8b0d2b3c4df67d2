#include "browser/forms/CellPage.h"

#include "browser/PictureUrls.h"

#include <QWebEngineProfile>
#include <QWebEngineSettings>

namespace quillmere {

namespace {
const QUrl kBlank(QStringLiteral("about:blank"));
}

void Interceptor::interceptRequest(QWebEngineUrlRequestInfo &info)
{
    const QUrl url = info.requestUrl();
    const bool picture = url.scheme() == QLatin1String(kPictureScheme) &&
                         info.resourceType() == QWebEngineUrlRequestInfo::ResourceTypeImage;
    info.block(!picture && url != kBlank);
}

CellPage::CellPage(QWebEngineProfile *profile, QObject *parent) : QWebEnginePage(profile, parent)
{
    for (QWebEngineSettings::WebAttribute off :
         {QWebEngineSettings::JavascriptEnabled, QWebEngineSettings::JavascriptCanOpenWindows,
          QWebEngineSettings::JavascriptCanAccessClipboard, QWebEngineSettings::LocalStorageEnabled,
          QWebEngineSettings::LocalContentCanAccessFileUrls, QWebEngineSettings::PluginsEnabled,
          QWebEngineSettings::HyperlinkAuditingEnabled, QWebEngineSettings::ErrorPageEnabled,
          QWebEngineSettings::FullScreenSupportEnabled, QWebEngineSettings::FocusOnNavigationEnabled,
          QWebEngineSettings::AutoLoadIconsForPage, QWebEngineSettings::PdfViewerEnabled,
          QWebEngineSettings::NavigateOnDropEnabled, QWebEngineSettings::DnsPrefetchEnabled,
          QWebEngineSettings::ShowScrollBars}) // those around the browser do for all of the page
        settings()->setAttribute(off, false);
    settings()->setUnknownUrlSchemePolicy(QWebEngineSettings::DisallowUnknownUrlSchemes);
    connect(this, &QWebEnginePage::featurePermissionRequested, this,
            [this](const QUrl &origin, Feature feature) {
                setFeaturePermission(origin, feature, PermissionDeniedByUser);
            });
}

// The browser asks nobody about this address, neither when we go there nor when markup does;
// writingScript() sees to the latter.
void CellPage::loadBlank()
{
    setUrl(kBlank);
}

} // namespace quillmere
