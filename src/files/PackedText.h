#pragma once

#include <QString>

#include <memory>

namespace quillmere {

// A text that is kept for a while and seldom asked for. A large one is packed, to a tenth or so. A value:
// copies share what is kept.
class PackedText
{
public:
    // Beside the thread that keeps it, which has it as it is until that is done; or now, by a thread that
    // nobody waits for. 5 million units take some fifty milliseconds.
    enum class Packing { Beside, Now };

    PackedText() = default;
    explicit PackedText(const QString &text, Packing packing = Packing::Beside);

    // To the letter. Unpacking 5 million units takes some ten milliseconds.
    QString text() const;
    qsizetype size() const { return m_size; } // units
    bool operator==(const QString &text) const { return m_size == text.size() && this->text() == text; }

private:
    struct Kept;
    static void pack(QString text, const std::weak_ptr<Kept> &left);

    qsizetype m_size = 0;
    std::shared_ptr<Kept> m_kept; // null for no text
};

} // namespace quillmere
