#include "checks/Problem.h"

#include <iterator>

namespace quillmere {

namespace {

constexpr auto E = Severity::Error;
constexpr auto W = Severity::Warning;
constexpr auto N = Severity::Note;

constexpr RuleText kTexts[] = {
    {E, "theme-config", "A file that theme.xml or the language catalogue names is missing."},
    {E, "unknown-image", "An image ID that the image catalogue does not have."},
    {E, "unknown-colour", "A colour that is neither in the colour catalogue nor a code."},
    {E, "unknown-font", "A font that the font catalogue does not have."},
    {E, "missing-image-file", "An image of the catalogue whose file is missing."},
    {E, "missing-font-file", "A font of the catalogue whose file is missing."},
    {E, "missing-document", "A window of the catalogue that has no document."},
    {E, "bad-rect", "A rect that is not four whole numbers in brackets."},
    {E, "unclosed-element", "An element without its closing tag, or a closing tag without its element."},
    {E, "unclosed-comment", "A comment that is not closed."},
    {E, "duplicate-id", "A name that occurs in a catalogue more than once."},
    {W, "letter-case",
     "A name or a file that exists only in another letter case, which a receiver does not accept."},
    {W, "duplicate-block", "Two blocks of one window have the same name; the preview styles them together."},
    {W, "outside-parent", "A block that extends beyond the block around it."},
    {W, "outside-screen", "A block that extends beyond the screen."},
    {W, "picture-size", "A single picture that is larger than its block, so it is cut."},
    {W, "colour-list", "A list of colours that does not have three entries."},
    {W, "mode", "Mode single with border images, or multiple without any."},
    {W, "key-colour", "Text in a colour that stands for transparency."},
    {W, "unreadable-picture", "A picture that is damaged, or too large for the preview."},
    {W, "untranslated", "Strings of a window that a language lacks."},
    {W, "blank-ends", "A translation whose blanks at the beginning or the end differ from its source."},
    {W, "placeholders", "A translation whose placeholders differ from its source."},
    {W, "end-punctuation", "A translation that ends with another punctuation mark than its source."},
    {W, "line-breaks", "A translation that has more or fewer line breaks than its source."},
    {W, "missing-letters", "A translation with letters that the font of its language lacks."},
    {W, "duplicate-source", "A source that occurs in a language more than once."},
    {W, "text-fit", "A text that its block cuts, in a language; reported once Text Fit has measured it."},
    {W, "unlisted-document", "A document that the window catalogue does not name."},
    {N, "unused-image", "An image that nothing uses."},
    {N, "unused-colour", "A colour that nothing uses."},
    {N, "unused-font", "A font that nothing uses."},
    {N, "unused-string", "A translation of a string that no window has."},
    {N, "two-translations", "A source that a language translates in two ways."},
    {N, "same-as-source", "A translation that is the same as its source."},
    {N, "same-picture", "Two image IDs whose files are identical."},
    {N, "same-colour", "Two colour names with the same code."},
    {N, "unmeasured-text", "Texts that Text Fit could not measure, or measured in another font."},
};
static_assert(std::size(kTexts) == kRules);

} // namespace

QString nameOf(Severity severity)
{
    constexpr const char *names[] = {"error", "warning", "note"};
    return QLatin1String(names[int(severity)]);
}

const RuleText &textOf(Rule rule)
{
    return kTexts[int(rule)];
}

std::optional<Rule> ruleOf(QStringView id)
{
    for (int rule = 0; rule < kRules; ++rule) {
        if (id == QLatin1String(kTexts[rule].id))
            return Rule(rule);
    }
    return std::nullopt;
}

} // namespace quillmere
