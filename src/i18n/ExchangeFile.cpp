#include "i18n/ExchangeFile.h"

#include "files/TextFile.h"
#include "i18n/PoFile.h"
#include "i18n/TableFile.h"
#include "i18n/XliffFile.h"

namespace quillmere {

namespace {

constexpr QChar kByteOrderMark(0xFEFF);

// The text, its lines ending in LF. LineError names the first line that is not UTF-8.
QString textOf(const QByteArray &bytes)
{
    DecodedText decoded = decodeText(bytes);
    if (decoded.page == CodePage::Windows1252) {
        int line = 1;
        for (qsizetype from = 0; from < bytes.size(); ++line) {
            qsizetype end = bytes.indexOf('\n', from);
            if (end < 0)
                end = bytes.size();
            if (pageOf(bytes.mid(from, end - from)) == CodePage::Windows1252)
                break;
            from = end + 1;
        }
        throw LineError(line, QStringLiteral("this is not UTF-8"));
    }
    if (decoded.text.startsWith(kByteOrderMark))
        decoded.text.remove(0, 1);
    return withLineFeeds(decoded.text);
}

} // namespace

std::optional<ExchangeFormat> exchangeFormatOf(const QString &path)
{
    static constexpr std::pair<QStringView, ExchangeFormat> endings[] = {{u".po", ExchangeFormat::Po},
                                                                         {u".xlf", ExchangeFormat::Xliff},
                                                                         {u".xliff", ExchangeFormat::Xliff},
                                                                         {u".csv", ExchangeFormat::Csv},
                                                                         {u".tsv", ExchangeFormat::Tsv}};
    for (const auto &[ending, format] : endings) {
        if (path.endsWith(ending, Qt::CaseInsensitive))
            return format;
    }
    return std::nullopt;
}

QByteArray exchangeBytes(ExchangeFormat format, const ExchangeTable &table)
{
    switch (format) {
    case ExchangeFormat::Po:
        return encodeText(poText(table), CodePage::Utf8);
    case ExchangeFormat::Xliff:
        return encodeText(xliffText(table), CodePage::Utf8);
    case ExchangeFormat::Csv:
    case ExchangeFormat::Tsv:
        break;
    }
    return encodeText(kByteOrderMark + tableText(table, format == ExchangeFormat::Csv ? u',' : u'\t'),
                      CodePage::Utf8);
}

ExchangeTable readExchange(ExchangeFormat format, const QByteArray &bytes)
{
    const QString text = textOf(bytes);
    switch (format) {
    case ExchangeFormat::Po:
        return readPo(text);
    case ExchangeFormat::Xliff:
        return readXliff(text);
    case ExchangeFormat::Csv:
    case ExchangeFormat::Tsv:
        break;
    }
    return readTable(text, format == ExchangeFormat::Csv ? u',' : u'\t');
}

} // namespace quillmere
