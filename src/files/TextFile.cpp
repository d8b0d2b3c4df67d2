#include "files/TextFile.h"

#include "files/FailedStep.h"
#include "files/Paths.h"
#include "files/RunTimeError.h"

#include <QFileInfo>

#include <algorithm>
#include <array>

namespace quillmere {

namespace {

// What Windows-1252 has at 80 to 9F (hex); elsewhere the byte is the character.
constexpr std::array<char16_t, 32> upperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

// The byte of a character, or -1.
int byteOf(char16_t unit)
{
    if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF))
        return unit;
    const auto found = std::find(upperControls.begin(), upperControls.end(), unit);
    return found == upperControls.end() ? -1 : 0x80 + int(found - upperControls.begin());
}

QString fromWindows1252(const QByteArray &bytes)
{
    QString text = QString::fromLatin1(bytes);
    for (QChar &c : text) {
        if (c.unicode() >= 0x80 && c.unicode() < 0xA0)
            c = upperControls[c.unicode() - 0x80];
    }
    return text;
}

// Stops at the first character that does not fit and gives its position.
qsizetype toWindows1252(const QString &text, QByteArray &bytes)
{
    bytes.resize(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const int byte = byteOf(text[i].unicode());
        if (byte < 0)
            return i;
        bytes[i] = char(byte);
    }
    return -1;
}

bool isAscii(const QByteArray &bytes)
{
    return std::none_of(bytes.begin(), bytes.end(), [](char c) { return uchar(c) > 127; });
}

QString fromUtf8(const QByteArray &bytes)
{
    QString text = QString::fromUtf8(bytes);
    // Qt takes a first byte order mark away; it has to go back into the file.
    if (bytes.startsWith("\xEF\xBB\xBF"))
        text.prepend(QChar(QChar::ByteOrderMark));
    return text;
}

qsizetype firstHalfPair(const QString &text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!text[i].isSurrogate())
            continue;
        if (!text[i].isHighSurrogate() || i + 1 == text.size() || !text[i + 1].isLowSurrogate())
            return i;
        ++i;
    }
    return -1;
}

[[noreturn]] void throwUnfit(const QString &text, qsizetype position, CodePage page)
{
    const qsizetype line = QStringView(text).first(position).count(u'\n') + 1;
    QString letter = text.mid(position, 1);
    char32_t code = text[position].unicode();
    if (text[position].isHighSurrogate() && position + 1 < text.size() &&
        text[position + 1].isLowSurrogate()) {
        letter = text.mid(position, 2);
        code = QChar::surrogateToUcs4(letter[0], letter[1]);
    } else if (text[position].isSurrogate()) {
        letter = QChar(QChar::ReplacementCharacter);
    }
    throw RunTimeError(QStringLiteral("The letter \"%1\" (U+%2) on line %3 cannot be written in %4.")
                           .arg(letter)
                           .arg(QString::number(code, 16).toUpper().rightJustified(4, u'0'))
                           .arg(line)
                           .arg(codePageName(page)));
}

QByteArray toUtf8(const QString &text)
{
    const qsizetype unfit = firstHalfPair(text);
    if (unfit >= 0)
        throwUnfit(text, unfit, CodePage::Utf8);
    return text.toUtf8();
}

} // namespace

QString codePageName(CodePage page)
{
    switch (page) {
    case CodePage::Ascii:
        return QStringLiteral("ASCII");
    case CodePage::Utf8:
        return QStringLiteral("UTF-8");
    case CodePage::Windows1252:
        break;
    }
    return QStringLiteral("Windows-1252");
}

CodePage pageOf(const QByteArray &bytes, CodePageRule rule)
{
    if (isAscii(bytes))
        return CodePage::Ascii;
    return rule == CodePageRule::Automatic && bytes.isValidUtf8() ? CodePage::Utf8 : CodePage::Windows1252;
}

DecodedText decodeText(const QByteArray &bytes, CodePageRule rule)
{
    switch (const CodePage page = pageOf(bytes, rule)) {
    case CodePage::Ascii:
        return {QString::fromLatin1(bytes), page};
    case CodePage::Utf8:
        return {fromUtf8(bytes), page};
    case CodePage::Windows1252:
        break;
    }
    return {fromWindows1252(bytes), CodePage::Windows1252};
}

QByteArray encodeText(const QString &text, CodePage page, CodePageRule rule)
{
    if (rule == CodePageRule::Automatic && page == CodePage::Utf8)
        return toUtf8(text);
    QByteArray bytes;
    const qsizetype unfit = toWindows1252(text, bytes);
    if (rule == CodePageRule::Windows1252) {
        if (unfit >= 0)
            throwUnfit(text, unfit, CodePage::Windows1252);
        return bytes;
    }
    const bool readsAsUtf8 = unfit < 0 && !isAscii(bytes) && bytes.isValidUtf8();
    return unfit >= 0 || readsAsUtf8 ? toUtf8(text) : bytes;
}

std::optional<QByteArray> LoadBytes(const QString &path, const Progress &progress, qint64 most)
{
    QString file = findFile(path);
    if (file.isEmpty()) {
        // Devices and pipes are no files to find.
        file = withOwnSeparators(path);
        const QFileInfo other(file);
        if (file.isEmpty() || !other.exists() || other.isDir())
            return {};
    }
    QString reason;
    const QByteArray bytes = readRegular(file, most, reason, progress);
    if (!reason.isEmpty())
        throwFailed("read", path, reason);
    return bytes;
}

DecodedText LoadText(const QString &path, CodePageRule rule)
{
    return decodeText(LoadBytes(path).value_or(QByteArray()), rule);
}

QString LoadFile(const QString &path, CodePageRule rule)
{
    return LoadText(path, rule).text;
}

} // namespace quillmere
