#include "browser/PageMark.h"

#include "browser/CellScripts.h"
#include "browser/PictureUrls.h"

#include <QRandomGenerator>

namespace quillmere {

namespace {

// A page may have rules of its own for what comes behind its root, and would look different without them. Its
// other rules can keep the mark from being seen as it is; then there is no sense in waiting for it.
const QString kPut = QStringLiteral(
    "function put(rules,wanted,transform){var root=document.documentElement,own=getComputedStyle(root),"
    "free=window.__free||['::after','::before'].find(function(e){"
    "return getComputedStyle(root,e).content=='none';});if(!free){window.__marked='hidden';return;}"
    "window.__free=free;beside('__mark',rules.replace('$',free));var is=getComputedStyle(root,free),"
    "plain={filter:'none',opacity:'1',clipPath:'none',webkitMaskImage:'none',"
    "perspective:'none',zoom:'1',mixBlendMode:'normal'};"
    "window.__marked=own.display!='none'&&own.transform==transform&&Object.keys(wanted).every(function(k){"
    "return is[k]==wanted[k];})&&"
    "Object.keys(plain).every(function(k){return own[k]==plain[k];})?'shown':'hidden';}");

// To outdo these a page has to mean it, and gains nothing.
QString rulesOf(const PageMark &mark)
{
    const auto colour = [](quint32 code) { return QStringLiteral("%1").arg(code, 6, 16, QLatin1Char('0')); };
    return QStringLiteral(":root:not(#q_q#q_q#q_q#q_q)${all:initial!important;content:\"\"!important;"
                          "display:block!important;position:fixed!important;z-index:2147483647!important;"
                          "top:%5px!important;left:%1px!important;width:%2px!important;height:%2px!important;"
                          "background:#%3!important;border-right:%2px solid #%4!important}")
        .arg(mark.x() * mark.shrink)
        .arg(PageMark::kSquare * mark.shrink)
        .arg(colour(mark.left), colour(mark.right))
        .arg(mark.top);
}

// What put() is called with: the rules, and how the mark and the root are to be seen then. A page that is
// shown smaller is scaled by its root.
QString wordsOf(const PageMark &mark)
{
    const double scale = 1.0 / mark.shrink;
    const QString transform =
        mark.shrink == 1 ? QStringLiteral("none") : QStringLiteral("matrix(%1, 0, 0, %1, 0, 0)").arg(scale);
    const auto colour = [](quint32 code) {
        return QStringLiteral("'rgb(%1, %2, %3)'").arg(code >> 16).arg(code >> 8 & 0xff).arg(code & 0xff);
    };
    return quoted(rulesOf(mark)) + QStringLiteral(",{display:'block',position:'fixed',visibility:'visible',"
                                                  "top:'%5px',left:'%1px',width:'%2px',height:'%2px',"
                                                  "backgroundColor:%3,borderRightColor:%4},'%6'")
                                       .arg(mark.x() * mark.shrink)
                                       .arg(PageMark::kSquare * mark.shrink)
                                       .arg(colour(mark.left), colour(mark.right))
                                       .arg(mark.top)
                                       .arg(transform);
}

QString withPut(const QString &body)
{
    return u"(function(){" + body + kPut + besideFunction() + u"})()";
}

} // namespace

PageMark PageMark::at(int place, int top, int shrink)
{
    constexpr quint32 kCodes = 1 << 24;
    QRandomGenerator *random = QRandomGenerator::system();
    return {place, top, shrink, random->bounded(kCodes), random->bounded(kCodes)};
}

// Pictures that only style rules name are asked for once more, from the cache, to learn when they are there.
// One that the page asks for when it comes into view is not waited for where it is out of it. Which fonts the
// page wants is known once it has been laid out.
QString markingWhenLoadedScript(const PageMark &mark)
{
    static const QString waiting =
        QStringLiteral(
            "var all=[],seen={},own=window.__marking={};delete window.__marked;delete "
            "window.__free;"
            "function waitFor(i){all.push(new Promise(function(done){if(i.complete)done();else "
            "i.onload=i.onerror=done;}));}"
            "function load(u){if(!u||u.indexOf('%1:')!=0||seen[u])return;seen[u]=1;"
            "var i=new Image();i.src=u;waitFor(i);}"
            "function find(css){css.replace(/url\\(\\s*(?:'([^']*)'|\"([^\"]*)\"|([^'\")]*))/g,"
            "function(m,a,b,c){load(a||b||c);return m;});}"
            "document.querySelectorAll('style').forEach(function(e){find(e.textContent);});"
            "document.querySelectorAll('[style]').forEach(function(e){find(e.getAttribute('style'));});"
            "document.querySelectorAll('[background]').forEach(function(e){"
            "load(e.getAttribute('background'));});"
            "Array.from(document.images).forEach(function(i){"
            "if(i.loading=='lazy'&&!i.complete)load(i.currentSrc||i.src);else waitFor(i);});"
            "all.push(new "
            "Promise(function(done){requestAnimationFrame(function(){document.documentElement.offsetWidth;"
            "document.fonts.ready.then(done);});}));"
            "if(document.readyState!='complete')all.push(new Promise(function(done){"
            "window.addEventListener('load',done,{once:true});}));"
            "Promise.allSettled(all).then(function(){if(window.__marking===own)put(")
            .arg(QLatin1String(kPictureScheme));
    return withPut(waiting + wordsOf(mark) + u");});");
}

QString movingMarkScript(const PageMark &mark)
{
    return withPut(u"if(window.__free)put(" + wordsOf(mark) + u");");
}

QString removingMarkScript()
{
    return withPut(QStringLiteral(
        "delete window.__marking;beside('__mark','');window.__marked='';var frames=3;(function next(){"
        "if(frames--)requestAnimationFrame(next);else window.__marked='removed';})();"));
}

QString markStateScript()
{
    return QStringLiteral("window.__marked||''");
}

PageMark::State PageMark::stateOf(const QString &answer)
{
    return answer == u"shown"     ? State::Shown
           : answer == u"hidden"  ? State::Hidden
           : answer == u"removed" ? State::Removed
                                  : State::Awaited;
}

} // namespace quillmere
