#pragma once

#include "RowsAsText.h"
#include "files/TextFile.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstdio>
#include <cstdlib>

using namespace quillmere;
using namespace Qt::StringLiterals;

// What the fuzz targets share. A target is one function, `fuzz`, that feeds its input to a routine and aborts
// through check() or same() where a promise is broken. Include this in one file of each program only.

// An input as libFuzzer makes it up, cut into parts at every "%%", so that seeds can be read and written by
// hand. A part that is missing is empty.
class Input
{
public:
    Input(const uint8_t *data, size_t size)
    {
        const QByteArray all(reinterpret_cast<const char *>(data), qsizetype(size));
        for (qsizetype from = 0; from >= 0;) {
            const qsizetype mark = all.indexOf("%%", from);
            m_parts.append(all.mid(from, mark < 0 ? -1 : mark - from));
            from = mark < 0 ? mark : mark + 2;
        }
    }

    QByteArray bytes(int part) const { return m_parts.value(part); }
    // As the program reads a file: UTF-8 or Windows-1252, whatever the bytes look like.
    QString text(int part) const { return decodeText(bytes(part)).text; }
    QStringList lines(int part) const { return text(part).split(u'\n', Qt::SkipEmptyParts); }
    // 0 to below - 1, by the first byte of the part.
    int choice(int part, int below) const
    {
        return bytes(part).isEmpty() ? 0 : uint8_t(bytes(part)[0]) % below;
    }

private:
    QList<QByteArray> m_parts;
};

inline void check(bool kept, const char *promise, const QString &about = {})
{
    if (kept)
        return;
    std::fprintf(stderr, "not kept: %s\n%s\n", promise, qPrintable(QString(about).replace(u'\0', u'\u2400')));
    std::abort();
}

inline void same(const QString &actual, const QString &expected, const char *promise)
{
    check(actual == expected, promise,
          QString(u"is:        {" + actual + u"}\nshould be: {" + expected + u'}'));
}

// The library folds the two halves of such a letter as one, the program one by one: comparing the two says
// nothing there.
inline bool hasSurrogates(const QString &text)
{
    for (const QChar unit : text) {
        if (unit.isSurrogate())
            return true;
    }
    return false;
}

inline bool holdsAny(const QString &text, QStringView units)
{
    for (const QChar unit : units) {
        if (text.contains(unit))
            return true;
    }
    return false;
}

void fuzz(const Input &input);

#ifndef RANDOM_TARGETS // there many targets are one program
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz(Input(data, size));
    return 0;
}
#endif
