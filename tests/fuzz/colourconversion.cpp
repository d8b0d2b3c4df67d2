#include "catalogues/ColourConversion.h"
#include "Fuzz.h"
#include "catalogues/LiteralConversion.h"

// Colours turn into the other form as row by row. Rows are lines NAME|CODE.
void fuzz(const Input &input)
{
    const QString text = input.text(1);
    if (hasSurrogates(text + input.text(0)))
        return;
    ListRows rows({QString(), QString(), QString()});
    for (const QString &line : input.lines(0))
        rows.add({}, {line.section(u'|', 0, 0), line.section(u'|', 1)});
    for (const ColourForm form : {ColourForm::Name, ColourForm::Code})
        same(ConvertColours(text, rows, form), literal::convert(text, rows, form), "converts");
}
