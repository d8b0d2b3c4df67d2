#include "markup/WidgetDocument.h"

#include "markup/Matching.h"

namespace quillmere {

WidgetBlocks cutBlocks(const QString &document)
{
    // One replacement may make the marker of a later one, so they run one after the other over the whole
    // text.
    WidgetBlocks cut{document, {}};
    replaceIgnoringCase(cut.text, u"<children>", u"");
    replaceIgnoringCase(cut.text, u"</children>", u"");
    replaceIgnoringCase(cut.text, u"<signal>", u"<!--");
    replaceIgnoringCase(cut.text, u"</signal>", u"-->");
    replaceIgnoringCase(cut.text, u"</widget>", u"</div>");
    replaceIgnoringCase(cut.text, u" name=\"", u" id=\"");
    replaceIgnoringCase(cut.text, u"<style ", u"<widget ");
    cut.blocks = splitIgnoringCase(cut.text, u"<widget ");
    if (!cut.blocks.isEmpty())
        cut.blocks.removeFirst(); // the document element and whatever stands before the first widget
    return cut;
}

qsizetype lineOfBlock(QStringView text, QStringView name)
{
    if (name.isEmpty())
        return 0;
    const qsizetype found = indexOfIgnoringCase(text, name);
    if (found < 0)
        return 0;
    const qsizetype lineBreak = text.first(found + 1).lastIndexOf(u"\r\n");
    return lineBreak < 0 ? 0 : lineBreak + 2;
}

} // namespace quillmere
