#pragma once

#include "files/Progress.h"
#include "files/RegularFile.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace quillmere {

// The one place where bytes become text and text becomes bytes. Every byte string comes back the same.
enum class CodePage {
    Ascii,       // no byte above 127: either page gives the same text
    Utf8,        // valid UTF-8, a byte order mark kept as U+FEFF
    Windows1252, // one byte a character; 81, 8D, 8F, 90, 9D (hex) map to the control of the same code
};

// Automatic looks at the bytes; Windows1252 reads and writes everything one byte a character.
enum class CodePageRule { Automatic, Windows1252 };

// How the bytes of a file became text.
struct Encoding
{
    CodePage page = CodePage::Ascii;
    CodePageRule rule = CodePageRule::Automatic;
};

// "Windows-1252" or "UTF-8"; "ASCII" where both give the same text.
QString codePageName(CodePage page);

struct DecodedText
{
    QString text;
    CodePage page = CodePage::Ascii;
};
DecodedText decodeText(const QByteArray &bytes, CodePageRule rule = CodePageRule::Automatic);

// The page that decodeText would read the bytes in.
CodePage pageOf(const QByteArray &bytes, CodePageRule rule = CodePageRule::Automatic);

// Bytes for a text that replaces a file of the given page: Ascii means Windows-1252 when every character
// fits, else UTF-8; Windows1252 likewise turns to UTF-8 where a letter does not fit, so that none is lost,
// unless the rule is Windows1252: then a letter that does not fit is a RunTimeError naming the letter and its
// 1-based line. UTF-8 is also taken where the one-byte form would be read back as UTF-8, that is, as other
// letters. Half a surrogate pair fits nowhere and is always such an error.
QByteArray encodeText(const QString &text, CodePage page, CodePageRule rule = CodePageRule::Automatic);

// The whole text of a file; empty, and no message, when it does not exist or is a folder. Takes both
// separators and any letter case (see findFile). RunTimeError says why a file that is there is not read; see
// RegularFile.h.
QString LoadFile(const QString &path, CodePageRule rule = CodePageRule::Automatic);
DecodedText LoadText(const QString &path, CodePageRule rule = CodePageRule::Automatic);
// Its bytes, at most so many; none where there is no such file.
std::optional<QByteArray> LoadBytes(const QString &path, const Progress &progress = {},
                                    qint64 most = kLargestFile);

} // namespace quillmere
