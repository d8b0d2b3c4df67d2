#pragma once

#include <QString>

#include <memory>

namespace quillmere {

// A text that is kept for a while and seldom asked for. A large one is packed beside the thread that keeps
// it, to a tenth or so; until that is done it is kept as it is. A value: copies share what is kept.
class PackedText
{
public:
    PackedText() = default;
    explicit PackedText(const QString &text);

    // To the letter. Unpacking 5 million units takes some ten milliseconds.
    QString text() const;
    qsizetype size() const { return m_size; } // units
    bool operator==(const QString &text) const { return m_size == text.size() && this->text() == text; }

private:
    struct Kept;

    qsizetype m_size = 0;
    std::shared_ptr<Kept> m_kept; // null for no text
};

} // namespace quillmere
