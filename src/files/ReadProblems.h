#pragma once

#include "files/RunTimeError.h"

#include <QStringList>

namespace quillmere {

// What could not be read of many files, while the others were.
class ReadProblems
{
public:
    void add(const RunTimeError &error)
    {
        if (++m_count <= kShown)
            m_messages.append(error.message());
    }
    bool isEmpty() const { return m_count == 0; }
    // A line each; of many, the first and how many more there are.
    QString text() const
    {
        const qsizetype more = m_count - m_messages.size();
        return more == 0 ? m_messages.join(u'\n')
                         : QString(m_messages.join(u'\n') +
                                   QStringLiteral("\nMore files cannot be read: %1.").arg(more));
    }

private:
    static constexpr qsizetype kShown = 5;
    QStringList m_messages;
    qsizetype m_count = 0;
};

} // namespace quillmere
