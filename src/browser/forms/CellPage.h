#pragma once

#include <QWebEnginePage>
#include <QWebEngineUrlRequestInterceptor>

namespace quillmere {

// Lets through what the pictures' scheme gives to pictures, and "about:blank".
class Interceptor : public QWebEngineUrlRequestInterceptor
{
    Q_OBJECT

public:
    using QWebEngineUrlRequestInterceptor::QWebEngineUrlRequestInterceptor;

    void interceptRequest(QWebEngineUrlRequestInfo &info) override;
};

// The page of the cell: it runs no script of its markup, opens nothing, goes nowhere and says nothing.
class CellPage : public QWebEnginePage
{
    Q_OBJECT

public:
    CellPage(QWebEngineProfile *profile, QObject *parent);

    // Starts a document that nothing has touched.
    void loadBlank();

protected:
    bool acceptNavigationRequest(const QUrl &, NavigationType, bool) override { return false; }
    QWebEnginePage *createWindow(WebWindowType) override { return nullptr; }
    // Theme markup has nothing to say on our standard output.
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString &, int,
                                  const QString &) override
    {
    }
    void javaScriptAlert(const QUrl &, const QString &) override {}
    bool javaScriptConfirm(const QUrl &, const QString &) override { return false; }
    bool javaScriptPrompt(const QUrl &, const QString &, const QString &, QString *) override
    {
        return false;
    }
    QStringList chooseFiles(FileSelectionMode, const QStringList &, const QStringList &) override
    {
        return {};
    }
};

} // namespace quillmere
