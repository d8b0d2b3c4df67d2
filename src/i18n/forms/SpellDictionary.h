#pragma once

#include "i18n/SpellWords.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace quillmere {

// A spelling dictionary in memory. Made and asked on one thread; large ones take a second to be read.
class SpellDictionary
{
public:
    // Whether the program was built with what reads dictionaries.
    static bool isBuiltIn();

    explicit SpellDictionary(const SpellFiles &files);
    ~SpellDictionary();

    // True also for a word in letters that the dictionary cannot hold.
    bool isRight(const QString &word) const;
    // What was meant by a wrong word, the likeliest first.
    QStringList suggestionsFor(const QString &word) const;

private:
    struct Reader;
    std::unique_ptr<Reader> m_reader;
};

} // namespace quillmere
