#pragma once

#include "i18n/ExchangeUnits.h"

#include <QByteArray>

#include <optional>

namespace quillmere {

// Files that carry a language to its translator and back.
enum class ExchangeFormat { Po, Xliff, Csv, Tsv };

// By the ending of the name, in any letter case: .po, .xlf or .xliff, .csv, .tsv.
std::optional<ExchangeFormat> exchangeFormatOf(const QString &path);

// UTF-8; tables begin with a byte order mark, by which spreadsheets know it. RunTimeError names half a
// surrogate pair, and its line.
QByteArray exchangeBytes(ExchangeFormat format, const ExchangeTable &table);

// LineError says why, and because of which line, the bytes are no such file.
ExchangeTable readExchange(ExchangeFormat format, const QByteArray &bytes);

} // namespace quillmere
