#pragma once

#include "outline/Outline.h"
#include "outline/Values.h"

#include <QStringView>

#include <array>

namespace quillmere {

// What a block says about itself: the first element of each kind that is a value.
class BlockLook
{
public:
    BlockLook(const Outline &outline, qint32 block);

    bool has(Kind kind) const { return m_elements[size_t(kind)] >= 0; }
    // Without the blanks around it; empty where there is none.
    QStringView value(Kind kind) const;
    // Where the value stands; empty where there is none.
    Range range(Kind kind) const;
    // As it stands between its tags.
    QStringView written(Kind kind) const;
    std::optional<Box> rect() const;
    bool isHidden() const;
    bool isFrame() const; // made of border pictures
    // The entry of a list of colours that a state (1 to 3) takes: its own, else the last one.
    QStringView entry(Kind kind, int state) const;

    enum class Across { Left, Centre, Right };
    enum class Down { Top, Centre, Bottom };
    struct Alignment
    {
        Across across = Across::Left;
        Down down = Down::Top;
    };
    // Of words that contradict each other the last one counts.
    Alignment alignment() const;

private:
    const Outline &m_outline;
    std::array<qint32, kKinds> m_elements;
};

} // namespace quillmere
