#pragma once

#include <QList>
#include <QString>
#include <QStringView>

namespace quillmere {

// A widget document cut into blocks: every widget and style element on its own, nesting flattened, in
// document order. A block is the text from behind "<widget " up to the next one, after the rewriting that
// makes <children> vanish, <signal> a comment, </widget> a </div>, ` name="` an ` id="` and <style a <widget.
struct WidgetBlocks
{
    QString text; // what the blocks are views into: one behind the other, nothing else
    QList<QStringView> blocks;
};
WidgetBlocks cutBlocks(const QString &document);

// Where the line that holds a block's name begins: 0-based position in `text` of the first character behind
// the last CR LF before the first occurrence of `name` (ignoring case). 0 when the name does not occur.
qsizetype lineOfBlock(QStringView text, QStringView name);

} // namespace quillmere
