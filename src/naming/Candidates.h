#pragma once

#include <QStringList>

#include <vector>

namespace quillmere {

// What may be offered at a place, in the order in which it is offered. Made once for many questions: theme
// catalogues hold tens of thousands of names, and one is asked with every key.
class Candidates
{
public:
    Candidates() = default;
    explicit Candidates(const QStringList &names) : m_names(names) {}

    const QStringList &names() const { return m_names; }
    // The numbers of the names that hold what was typed, ignoring letter case: first those that begin with
    // it, each part in the order of the names.
    std::vector<qint32> matching(QStringView typed) const;

private:
    QStringList m_names; // in texts that the index holds as well
};

} // namespace quillmere
