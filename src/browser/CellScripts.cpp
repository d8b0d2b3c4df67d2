#include "browser/CellScripts.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace quillmere {

QString quoted(const QString &text)
{
    return QString::fromUtf8(QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact)) + u"[0]";
}

QString untouchedScript()
{
    return QStringLiteral("!Object.hasOwn(window,'__pieces')");
}

// The last refresh that a document is told of counts, and that to "about:blank" is the one navigation nobody
// is asked about. Ours leads nowhere: the cell refuses it.
QString writingScript(const QString &pageExpression, bool scrollable)
{
    return u"(function(){var p=" + pageExpression +
           u",x=window.scrollX,y=window.scrollY;window.__pieces=[];document.open();document.write(p);"
           u"document.close();"
           u"if(/http-equiv/i.test(p)){var m=document.createElement('meta');m.httpEquiv='refresh';"
           u"m.content='0;url=quillmere:/';document.documentElement.appendChild(m);m.remove();}" +
           overflowScript(scrollable) + u"if(x||y)window.scrollTo(x,y);})()";
}

bool bindsDocument(const QString &page)
{
    return page.contains(QLatin1String("http-equiv"), Qt::CaseInsensitive);
}

// The window of a page scrolls by the rule of its root element; without one there it goes by that of the
// body, which is where pages forbid it.
QString overflowScript(bool scrollable)
{
    return QStringLiteral("document.documentElement.style.overflow='%1';")
        .arg(scrollable ? QStringLiteral("auto") : QString());
}

// Loads the pictures that the style rules name once more (from the cache) to learn when they are there, and
// waits two frames.
QString watchingScript()
{
    return QStringLiteral(
        "(function(){window.__drawn=false;var "
        "css='';document.querySelectorAll('style').forEach(function(s){css+=s."
        "textContent});var "
        "loads=[],seen={};css.replace(/url\\('([^']+)'\\)/g,function(m,u){if(seen[u])return "
        "m;seen[u]="
        "1;loads.push(new Promise(function(done){var i=new "
        "Image();i.onload=i.onerror=done;i.src=u;}));return "
        "m;});"
        "Promise.all(loads).then(function(){requestAnimationFrame(function(){requestAnimationFrame(function()"
        "{"
        "window.__drawn=true;});});});})()");
}

} // namespace quillmere
