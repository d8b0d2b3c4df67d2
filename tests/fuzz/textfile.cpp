#include "Fuzz.h"
#include "files/RunTimeError.h"

// Bytes come back as they were, and a text that could be written reads the same again, in whatever code page.
void fuzz(const Input &input)
{
    const QByteArray bytes = input.bytes(0);
    QString units; // as they come, halves of pairs and all
    for (qsizetype i = 0; i + 1 < bytes.size(); i += 2)
        units += QChar(char16_t(uint8_t(bytes[i]) << 8 | uint8_t(bytes[i + 1])));

    for (const CodePageRule rule : {CodePageRule::Automatic, CodePageRule::Windows1252}) {
        const DecodedText decoded = decodeText(bytes, rule);
        check(encodeText(decoded.text, decoded.page, rule) == bytes, "bytes come back", decoded.text);
        for (const QString &text : {units, decodeText(bytes).text, input.text(1)}) {
            for (const CodePage page : {CodePage::Ascii, CodePage::Utf8, CodePage::Windows1252}) {
                try {
                    same(decodeText(encodeText(text, page, rule), rule).text, text,
                         "what is written is read");
                } catch (const RunTimeError &) {
                    check(rule == CodePageRule::Windows1252 || !text.isValidUtf16(), "no letter is refused",
                          text);
                }
            }
        }
    }
}
