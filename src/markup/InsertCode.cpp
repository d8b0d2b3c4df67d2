#include "markup/InsertCode.h"

#include <QStringBuilder>

#include <algorithm>

namespace quillmere {

TextSelection InsertCode(const TextSelection &box, QStringView opening, QStringView closing)
{
    const QStringView text = box.text;
    const qsizetype start = std::clamp<qsizetype>(box.start, 0, text.size());
    const qsizetype length = std::clamp<qsizetype>(box.length, 0, text.size() - start);
    return {text.first(start) % opening % text.sliced(start, length) % closing % text.sliced(start + length),
            start + opening.size(), length};
}

} // namespace quillmere
