#pragma once

#include <QString>

#include <optional>

namespace quillmere {

// The text of a page with the line breaks of a document, "\n" and no others. Nothing where it holds what the
// browser puts something else for: a null, or half of a pair of surrogates.
std::optional<QString> withPlainLines(const QString &page);

} // namespace quillmere
