#include "browser/PageMark.h"

#include "browser/CellScripts.h"
#include "browser/PictureUrls.h"

#include <QRandomGenerator>

namespace quillmere {

namespace {

// A page may have rules of its own for what comes behind its root, and would look different without them.
const QString kPut =
    QStringLiteral("function put(rules){var free=window.__marked||['::after','::before'].find(function(e){"
                   "return getComputedStyle(document.documentElement,e).content=='none';});"
                   "if(!free)return;beside('__mark',rules.replace('$',free));window.__marked=free;}");

// Rules with as many names of elements would be needed to outdo these, and lose no more than time: a mark
// that is not seen is not waited for long.
QString rulesOf(const PageMark &mark)
{
    const auto colour = [](quint32 code) { return QStringLiteral("%1").arg(code, 6, 16, QLatin1Char('0')); };
    return QStringLiteral(":root:not(#q_q#q_q#q_q#q_q)${all:initial!important;content:\"\"!important;"
                          "display:block!important;position:fixed!important;z-index:2147483647!important;"
                          "top:0!important;left:%1px!important;width:%2px!important;height:%2px!important;"
                          "background:#%3!important;border-right:%2px solid #%4!important}")
        .arg(mark.x())
        .arg(PageMark::kSquare)
        .arg(colour(mark.left), colour(mark.right));
}

QString withPut(const QString &body)
{
    return u"(function(){" + body + kPut + besideFunction() + u"})()";
}

} // namespace

PageMark PageMark::at(int place)
{
    constexpr quint32 kCodes = 1 << 24;
    QRandomGenerator *random = QRandomGenerator::system();
    return {place, random->bounded(kCodes), random->bounded(kCodes)};
}

// Pictures that only style rules name are asked for once more, from the cache, to learn when they are there.
// One that the page asks for when it comes into view is not waited for where it is out of it.
QString markingWhenLoadedScript(const PageMark &mark)
{
    static const QString waiting =
        QStringLiteral(
            "var all=[document.fonts.ready],seen={},own=window.__marking={};delete window.__marked;"
            "function load(u){if(!u||u.indexOf('%1:')!=0||seen[u])return;seen[u]=1;"
            "var i=new Image();i.src=u;all.push(i.decode());}"
            "function find(css){css.replace(/url\\(\\s*(?:'([^']*)'|\"([^\"]*)\"|([^'\")]*))/g,"
            "function(m,a,b,c){load(a||b||c);return m;});}"
            "document.querySelectorAll('style').forEach(function(e){find(e.textContent);});"
            "document.querySelectorAll('[style]').forEach(function(e){find(e.getAttribute('style'));});"
            "document.querySelectorAll('[background]').forEach(function(e){"
            "load(e.getAttribute('background'));});"
            "Array.from(document.images).forEach(function(i){"
            "if(i.loading=='lazy'&&!i.complete)load(i.currentSrc||i.src);else all.push(i.decode());});"
            "if(document.readyState!='complete')all.push(new Promise(function(done){"
            "window.addEventListener('load',done,{once:true});}));"
            "Promise.allSettled(all).then(function(){if(window.__marking===own)put(")
            .arg(QLatin1String(kPictureScheme));
    return withPut(waiting + quoted(rulesOf(mark)) + u");});");
}

QString movingMarkScript(const PageMark &mark)
{
    return withPut(u"if(window.__marked)put(" + quoted(rulesOf(mark)) + u");");
}

QString removingMarkScript()
{
    return withPut(QStringLiteral("delete window.__marking;beside('__mark','');"));
}

QString isMarkedScript()
{
    return QStringLiteral("!!window.__marked");
}

} // namespace quillmere
