#include "checks/FontLetters.h"
#include "Fuzz.h"

// Any bytes are read, and a letter beyond Unicode is in no font. The parts are those of a font's file; what
// divides them is put back.
void fuzz(const Input &input)
{
    const QByteArray font =
        input.bytes(0) + (input.bytes(1).isEmpty() ? QByteArray() : "%%" + input.bytes(1));
    const std::optional<FontLetters> letters = FontLetters::read(font);
    if (!letters)
        return;
    int count = 0;
    for (char32_t letter = 0; letter < 0x110000; ++letter)
        count += letters->has(letter);
    check(count > 0, "a font without a letter is none", QString::number(font.size()));
    check(!letters->has(0x110000), "no letter beyond Unicode", QString());
}
