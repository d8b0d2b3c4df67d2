#include "browser/CellScripts.h"

#include "markup/Matching.h"

#include <QJsonDocument>

namespace quillmere {

namespace {

// Rules that count behind those of the page, in a sheet that is no part of the document; "" takes them away.
// The sheet is kept under a name. Opening the document for another page drops all sheets. True where there
// was none before.
const QString kBeside = QStringLiteral(
    "function beside(name,rules){var all=Array.from(document.adoptedStyleSheets),s=window[name],"
    "is=all.indexOf(s)>=0;if(!rules){if(is)document.adoptedStyleSheets=all.filter("
    "function(o){return o!==s;});return false;}if(!is)s=window[name]=new CSSStyleSheet();"
    "s.replaceSync(rules);if(!is)document.adoptedStyleSheets=all.concat([s]);return !is;}");

} // namespace

QString besideFunction()
{
    return kBeside;
}

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
QString writingScript(const QString &pageExpression, int number, const PageView &view)
{
    return u"(function(){var p=" + pageExpression +
           u",x=window.scrollX,y=window.scrollY;window.__pieces=[];document.open();document.write(p);"
           u"document.close();"
           u"if(/http-equiv/i.test(p)){var m=document.createElement('meta');m.httpEquiv='refresh';"
           u"m.content='0;url=quillmere:/';document.documentElement.appendChild(m);m.remove();}" +
           (view.isPlain() ? QString() : viewScript(view)) + u"if(x||y)window.scrollTo(x,y);window.__page=" +
           QString::number(number) + u";return true;})()";
}

// First everything is found, and looked at, then everything is changed: paths are those of before.
QString patchingScript(const QJsonArray &changes, int from, int number, const QString &rules)
{
    static const QString script =
        QStringLiteral(
            "(function(changes,from,number,rules){if(window.__page!==from)return false;"
            "var places=changes.map(function(c){var n=document.documentElement;"
            "c[1].forEach(function(i){n=n&&n.childNodes[i];});"
            "if(!n||(c[0]=='data'?!(n.nodeType==3||n.nodeType==8)||n.data.length!=c[2]:n.nodeType!=1)||"
            "c[0]=='children'&&n.childNodes.length!=c[2])return null;return n;});"
            "if(places.indexOf(null)>=0)return false;"
            "function set(e,list){list.forEach(function(a){e.setAttribute(a[0],a[1]);});}"
            "function fill(e,list,before){list.forEach(function(t){var n;"
            "if(typeof t=='string')n=document.createTextNode(t);"
            "else if(Array.isArray(t)){n=document.createElement(t[0]);set(n,t[1]);fill(n,t[2],null);}"
            "else n=document.createComment(t.comment);e.insertBefore(n,before);});}"
            "changes.forEach(function(c,k){var n=places[k],i;"
            "if(c[0]=='data')n.replaceData(c[3],c[4],c[5]);"
            "else if(c[0]=='attributes'){while(n.attributes.length>c[2])"
            "n.removeAttribute(n.attributes[n.attributes.length-1].name);set(n,c[3]);}"
            "else{for(i=0;i<c[4];++i)n.childNodes[c[3]].remove();"
            "fill(n,c[5],n.childNodes[c[3]]||null);}});"
            "beside('__rules',rules);window.__page=number;return true;") +
        kBeside + QStringLiteral("})");
    return script + u'(' + QString::fromUtf8(QJsonDocument(changes).toJson(QJsonDocument::Compact)) +
           QStringLiteral(",%1,%2,").arg(from).arg(number) + quoted(rules) + u')';
}

// By its rarest letter, since it is asked of every page and a page can be long.
bool bindsDocument(const QString &page)
{
    const QStringView word = u"http-equiv";
    const qsizetype before = word.indexOf(u'q');
    for (const QChar q : {u'q', u'Q'}) {
        for (qsizetype at = page.indexOf(q, before); at >= 0; at = page.indexOf(q, at + 1)) {
            if (matchesIgnoringCase(page, at - before, word))
                return true;
        }
    }
    return false;
}

// With the size the page is laid out as it is when it is plain, whatever room the browser has. What the root
// element overflows with is seen all the same.
QString viewScript(const PageView &view)
{
    constexpr double kPixelsFrom = 3; // above it the pixels of a picture are what one looks at
    const QString rules =
        view.isPlain()
            ? QString()
            : QStringLiteral("html{transform-origin:0 0!important;transform:translate(%1px,%2px) scale(%3)"
                             "!important;width:%4px!important;height:%5px!important;%6}"
                             "body{overflow:hidden!important}")
                  .arg(-view.pan.x())
                  .arg(-view.pan.y())
                  .arg(view.zoom, 0, 'f', 6)
                  .arg(view.size.width())
                  .arg(view.size.height())
                  .arg(view.zoom > kPixelsFrom ? QStringLiteral("image-rendering:pixelated!important;")
                                               : QString());
    return u"(function(){if(beside('__view','" + rules + u"'))window.scrollTo(0,0);" + kBeside + u"})();";
}

// Of a plain page it is the element that scrolls which knows; of one with a view it would count the view in.
QString extentScript()
{
    return QStringLiteral("(function(){var e=document.documentElement;"
                          "if(Array.from(document.adoptedStyleSheets).indexOf(window.__view)<0)"
                          "e=document.scrollingElement||e;"
                          "return JSON.stringify([e.scrollWidth,e.scrollHeight]);})()");
}

// Every div of ours is placed absolutely, so that the div around it is what its box is cut by.
QString placesScript()
{
    return QStringLiteral(
        "(function(){var e=document.documentElement,o=e.getBoundingClientRect(),"
        "k=e.offsetWidth?o.width/e.offsetWidth:1,ids=[],boxes=[],clips=new Map();"
        "function cut(a,b){return b?[Math.max(a[0],b[0]),Math.max(a[1],b[1]),Math.min(a[2],b[2]),"
        "Math.min(a[3],b[3])]:a;}"
        "function put(b){boxes.push(b[0],b[1],Math.max(0,b[2]-b[0]),Math.max(0,b[3]-b[1]));}"
        "for(const d of document.getElementsByTagName('div')){ids.push(d.getAttribute('id')||'');"
        "if(!d.getClientRects().length){boxes.push(0,0,-1,0,0,0,-1,0);continue;}"
        "var r=d.getBoundingClientRect(),l=(r.left-o.left)/k,t=(r.top-o.top)/k,"
        "b=[l,t,l+r.width/k,t+r.height/k],around=d.parentElement.closest('div'),"
        "clip=around?clips.get(around):null;put(b);put(cut(b,clip));"
        "if(getComputedStyle(d).overflow!='visible'){var x=l+d.clientLeft,y=t+d.clientTop;"
        "clip=cut([x,y,x+d.clientWidth,y+d.clientHeight],clip);}clips.set(d,clip);}"
        "return JSON.stringify([ids,boxes]);})()");
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
