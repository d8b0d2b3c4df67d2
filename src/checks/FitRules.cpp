#include "checks/FitTexts.h"
#include "checks/ThemeReport.h"
#include "checks/WindowReport.h"

namespace quillmere {

namespace {

// "English", "English, German", "English, German and 7 more".
QString listed(const QStringList &languages)
{
    constexpr qsizetype most = 6;
    const QString first = languages.mid(0, most).join(QStringLiteral(", "));
    return languages.size() <= most
               ? first
               : QStringLiteral("%1 and %2 more").arg(first).arg(languages.size() - most);
}

QString loss(CutOff cut)
{
    if (cut.across <= 0)
        return QStringLiteral("%1 pixels of its height").arg(cut.down);
    const QString across = QStringLiteral("%1 pixels").arg(cut.across);
    return cut.down <= 0 ? across : QStringLiteral("%1, and %2 of its height").arg(across).arg(cut.down);
}

} // namespace

void checkTextFit(WindowReport &report)
{
    if (!report.facts.fit || report.file.role != FileRole::Window)
        return;
    const FitFacts &fit = *report.facts.fit;
    int unmeasured = 0;
    Range first;
    for (const TextInRoom &text : textsInRooms(report.outline, receiverTheme(fit.measured))) {
        for (const ShownText &shown : shownTexts(text, fit)) {
            const auto measure = fit.measured.measures->texts.constFind(shown.set);
            if (measure == fit.measured.measures->texts.cend())
                continue;
            if (!*measure) {
                if (unmeasured++ == 0)
                    first = text.set.range;
                continue;
            }
            const CutOff cut =
                cutOff(text, **measure, shown.set.text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
            if (cut.isNothing())
                continue;
            const QString languages =
                shown.languages.isEmpty() ? QString() : QString(u" (" + listed(shown.languages) + u')');
            // The text comes late: a line that begins with letters from right to left runs so.
            report.add(Rule::TextFit, text.set.range,
                       u"Cut by " + loss(cut) + languages + u": " + quoted(shown.set.text.trimmed()) +
                           u" in " + report.block(text.block),
                       report.blockName(text.block));
        }
    }
    if (unmeasured == 1)
        report.add(Rule::UnmeasuredText, first, QStringLiteral("A text could not be measured"), {});
    else if (unmeasured > 1)
        report.add(Rule::UnmeasuredText, first,
                   QStringLiteral("%1 texts could not be measured; the first is here").arg(unmeasured), {});
}

// Who has the fonts gets what stands there, and not what another system's letters make of it.
void checkMeasuredFonts(ThemeReport &report, const ThemeFacts &facts)
{
    if (!facts.fit)
        return;
    const MeasuredTheme &measured = facts.fit->measured;
    const Catalogue &fonts = report.catalogues.of(FileRole::FontCatalogue);
    for (qsizetype row = 0; row < fonts.rows.size(); ++row) {
        const QString &name = fonts.rows.at(row).name;
        const bool isUsed = name == u"font_prog" || report.index.isUsed(NameKind::Font, name);
        if (!fonts.rows.at(row).isFirst || !isUsed ||
            measured.measures->families.contains(measured.font(name).family))
            continue;
        report.add(Rule::UnmeasuredText, fonts, row,
                   u"Texts in " + quoted(name) + u" are measured in another font: its file is missing");
    }
}

} // namespace quillmere
