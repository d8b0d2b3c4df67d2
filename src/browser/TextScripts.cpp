#include "browser/TextScripts.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace quillmere {

QString measuringPage(const QString &sheet)
{
    return u"<html><head><style>body{margin:0;overflow:hidden;}div{position:absolute;}" + sheet +
           u"</style></head><body></body></html>";
}

QString familiesScript()
{
    return QStringLiteral("(function(){var fonts=Array.from(document.fonts);"
                          "if(fonts.some(function(f){return f.status=='loading';}))return '';"
                          "return fonts.filter(function(f){return f.status=='loaded';})"
                          ".map(function(f){return f.family+'\\n';}).join('')+'\\n';})()");
}

// The line is what layout makes of the text, with the fonts that letters were found in; its ink is what a
// canvas says of the same font. An empty inline block stands on the base line.
QString measuringScript(const QList<SetText> &texts)
{
    static const QString script = QStringLiteral(
        "(function(texts){var all=document.createElement('div'),"
        "pen=document.createElement('canvas').getContext('2d'),range=document.createRange();"
        "var set=texts.map(function(t){var d=document.createElement('div'),s=document.createElement('span'),"
        "m=document.createElement('i');d.className='t';d.style.cssText=t[1];if(t[2])s.dir='rtl';"
        "m.style.display='inline-block';s.append(t[0],m);d.append(s);all.append(d);return [s,m,t];});"
        "document.body.append(all);pen.textAlign='left';var font='';"
        "var answer=set.map(function(e){var s=e[0],line=s.getBoundingClientRect(),"
        "base=e[1].getBoundingClientRect().bottom-line.top,style=getComputedStyle(s).font;"
        "range.selectNodeContents(s.firstChild);var r=range.getBoundingClientRect();"
        "if(style!=font)pen.font=font=style;pen.direction=e[2][2]?'rtl':'ltr';"
        "var ink=pen.measureText(e[2][0]);return [r.width,line.height,-ink.actualBoundingBoxLeft,"
        "ink.actualBoundingBoxRight,base-ink.actualBoundingBoxAscent,base+ink.actualBoundingBoxDescent];});"
        "all.remove();return JSON.stringify(answer);})");
    QJsonArray array;
    for (const SetText &each : texts)
        array.append(QJsonArray{each.text, each.font, each.text.isRightToLeft()});
    return script + u'(' + QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact)) + u')';
}

QList<TextExtent> extentsOf(const QVariant &answer, qsizetype texts)
{
    const QJsonArray array = QJsonDocument::fromJson(answer.toByteArray()).array();
    QList<TextExtent> extents;
    if (array.size() != texts)
        return extents;
    for (const QJsonValue &each : array) {
        const auto number = [numbers = each.toArray()](int at) { return float(numbers.at(at).toDouble()); };
        extents.append({number(0), number(1), number(2), number(3), number(4), number(5)});
    }
    return extents;
}

} // namespace quillmere
