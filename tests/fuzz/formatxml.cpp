#include "markup/FormatXML.h"
#include "Fuzz.h"
#include "markup/LiteralTwins.h"

// A document is laid out as step by step.
void fuzz(const Input &input)
{
    const QString text = input.text(0);
    QString formatted = text;
    const QString returned = quillmere::FormatXML(formatted);
    same(formatted, twins::formatXml(text), "formats");
    same(returned, formatted, "returns what it has made");
}
