#include "theme/LanguageEdit.h"

#include "files/FailedStep.h"
#include "i18n/LanguageStrings.h"
#include "i18n/TypedTranslation.h"
#include "markup/Matching.h"

#include <QCoreApplication>

#include <algorithm>

namespace quillmere {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("quillmere::LanguageEdit", text);
}

void refuse(const QString &translation)
{
    if (const QString reason = reasonAgainst(translation); !reason.isEmpty())
        throw RunTimeError(reason);
}

QString lineEndOf(const QString &text)
{
    const bool isLineFeed = containsExact(text, u"\n") && !containsExact(text, u"\r\n");
    return isLineFeed ? QStringLiteral("\n") : QStringLiteral("\r\n");
}

// What has to be changed so that the file says so; whether it does is looked at afterwards.
RangeChange changeFor(const QString &text, const LanguageString *known, const QString &source,
                      const QString &after)
{
    if (known && known->translation.isNull())
        return {};
    if (known) {
        const qint32 start = qint32(known->translation.data() - text.constData());
        // One that closes itself is read as if what follows it were the content.
        if (QStringView(text).first(start).endsWith(u"/>"))
            return {{start - 2, start}, QStringLiteral("/>"), u'>' + after + u"</tran>"};
        return {{start, start + qint32(known->translation.size())}, known->translation.toString(), after};
    }
    qsizetype end = -1;
    for (qsizetype at = indexOfIgnoringCase(text, u"</language>"); at >= 0;
         at = indexOfIgnoringCase(text, u"</language>", at + 1))
        end = at;
    if (end < 0)
        return {};
    return {{qint32(end), qint32(end)},
            {},
            u"<tran id=\"" + source + u"\">" + after + u"</tran>" + lineEndOf(text)};
}

} // namespace

ThemeEdit translationInFile(const QString &path, const QString &text, CodePage page, const QString &source,
                            const QString &translation)
{
    refuse(translation);
    const QList<LanguageString> strings = languageStrings(text);
    const auto known = std::find_if(strings.begin(), strings.end(),
                                    [&](const LanguageString &string) { return string.source == source; });
    const bool isKnown = known != strings.end();
    QString after = translation;
    after.replace(u'\n', lineEndOf(text));
    const RangeChange change = changeFor(text, isKnown ? &*known : nullptr, source, after);

    // Elements that close themselves, a ">" in a source and the like are read in their own way.
    const QString changed = changedText(text, {change});
    const QList<LanguageString> now = languageStrings(changed);
    const qsizetype number = isKnown ? known - strings.begin() : strings.size();
    bool isSame = now.size() == strings.size() + (isKnown ? 0 : 1);
    for (qsizetype i = 0; isSame && i < now.size(); ++i) {
        const bool isThis = i == number;
        isSame = now[i].source == (isThis ? QStringView(source) : strings[i].source) &&
                 now[i].translation == (isThis ? QStringView(after) : strings[i].translation);
    }
    ThemeEdit edit;
    // ASCII alone tells no page; the file calls itself UTF-8.
    if (!isSame || !edit.replace(path, text, change.range, change.after,
                                 page == CodePage::Ascii ? CodePage::Utf8 : page))
        throwFailed("change", path, tr("it has no place for a translation of \"%1\"").arg(source));
    return edit;
}

ThemeEdit translationInRows(const QString &path, const QList<ListRows::Row> &rows, const QString &source,
                            const QString &translation)
{
    refuse(translation);
    int row = 0;
    while (row < rows.size() && rows[row].sub(1) != source)
        ++row;
    RowChange change = {row, std::nullopt, ListRows::Row{{}, {source, QString()}}};
    if (row < rows.size())
        change.before = change.after = rows[row];
    change.after->subItems.resize(2);
    change.after->subItems[1] = inRow(translation, *change.after);
    ThemeEdit edit;
    edit.changeRow(path, change);
    return edit;
}

} // namespace quillmere
