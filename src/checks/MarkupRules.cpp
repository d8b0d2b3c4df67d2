#include "checks/WindowReport.h"
#include "outline/Values.h"

namespace quillmere {

namespace {

void checkElement(WindowReport &report, qint32 index)
{
    const Element &element = report.outline.element(index);
    const QString name = report.outline.at(element.name()).toString();
    if (element.end == End::Missing)
        report.add(Rule::UnclosedElement, element.tag, quoted(name) + u" is not closed", name);
    // Where its value ends is not known of one that is not closed.
    const bool isWhole = element.end == End::Tag || element.end == End::Self;
    if (element.kind != Kind::Rect || !isWhole || !report.counts(element) || rectOf(report.outline, index))
        return;
    const qint32 block = report.outline.blockOf(index);
    const QString whose = block < 0 ? QString() : QString(u", the rect of " + report.block(block));
    report.add(Rule::BadRect, element.range(),
               u"Not four whole numbers: " + quoted(report.outline.valueOf(index)) + whose,
               block < 0 ? QString() : report.blockName(block));
}

// "</name>", or what there is of it.
QString closingName(QStringView tag)
{
    tag = tag.sliced(std::min<qsizetype>(2, tag.size()));
    if (tag.endsWith(u'>'))
        tag.chop(1);
    return tag.trimmed().toString();
}

} // namespace

// What is not closed, what is closed too often, and rects that are none.
void checkMarkup(WindowReport &report)
{
    const Outline &outline = report.outline;
    for (qint32 index = 0; index < qint32(outline.elements().size()); ++index) {
        if (!outline.element(index).inComment)
            checkElement(report, index);
    }
    for (const Range &tag : outline.strayTags()) {
        const QString name = closingName(outline.at(tag));
        report.add(Rule::UnclosedElement, tag, quoted(name) + u" is closed, but not opened", name);
    }
    for (const Comment &comment : outline.comments()) {
        if (!comment.closed)
            report.add(Rule::UnclosedComment, comment.range, QStringLiteral("The comment is not closed"), {});
    }
}

} // namespace quillmere
