#pragma once

#include <QString>

namespace quillmere {

class HeldText;

// The text of a document with CR LF line ends, kept from key to key: putting it together from a large
// document takes longer than the key.
class BoxText
{
public:
    // The document is another one, made of this text, which counts to the letter until it changes.
    void set(const QString &text, const HeldText &held);
    QString of(const HeldText &held);
    // The document has changed, as its contentsChange() tells.
    void follow(const HeldText &held, int from, int removed, int added);
    // Of a position in the document in the text of().
    qsizetype positionOf(const HeldText &held, int position);

private:
    void forget();

    QString m_text; // where m_isKnown
    bool m_isKnown = false;
    bool m_isOwn = false; // and every line of it ends in CR LF, and nothing of it is held
};

} // namespace quillmere
