#include "i18n/forms/SpellDictionary.h"

#include <QFile>
#include <QStringDecoder>
#include <QStringEncoder>

#ifdef QUILLMERE_HUNSPELL
#include <hunspell/hunspell.h>
#endif

namespace quillmere {

#ifdef QUILLMERE_HUNSPELL

struct SpellDictionary::Reader
{
    explicit Reader(const SpellFiles &files)
        : handle(Hunspell_create(QFile::encodeName(files.rules).constData(),
                                 QFile::encodeName(files.words).constData()))
    {
        // Some name a page as it is called elsewhere.
        QByteArray page = Hunspell_get_dic_encoding(handle);
        if (page.startsWith("microsoft-"))
            page.remove(0, 10);
        encode = QStringEncoder(page.constData());
        decode = QStringDecoder(page.constData());
    }
    ~Reader() { Hunspell_destroy(handle); }
    Reader(const Reader &) = delete;
    Reader &operator=(const Reader &) = delete;

    // Empty for a word with a letter that the page does not have.
    QByteArray bytesOf(const QString &word)
    {
        if (!encode.isValid())
            return {};
        encode.resetState();
        const QByteArray bytes = encode(word);
        return encode.hasError() || textOf(bytes.constData()) != word ? QByteArray() : bytes;
    }
    QString textOf(const char *bytes)
    {
        decode.resetState();
        return decode(QByteArrayView(bytes));
    }

    Hunhandle *handle;
    QStringEncoder encode;
    QStringDecoder decode;
};

bool SpellDictionary::isBuiltIn()
{
    return true;
}

SpellDictionary::SpellDictionary(const SpellFiles &files) : m_reader(std::make_unique<Reader>(files)) {}

// Typographic apostrophes are in few dictionaries.
bool SpellDictionary::isRight(const QString &word) const
{
    const auto knows = [this](const QString &written) {
        const QByteArray bytes = m_reader->bytesOf(written);
        return bytes.isEmpty() || Hunspell_spell(m_reader->handle, bytes.constData()) != 0;
    };
    const QString plain = QString(word).replace(u'\u2019', u'\'');
    return knows(plain) || (plain != word && knows(word));
}

QStringList SpellDictionary::suggestionsFor(const QString &word) const
{
    const QByteArray bytes = m_reader->bytesOf(QString(word).replace(u'\u2019', u'\''));
    if (bytes.isEmpty())
        return {};
    char **list = nullptr;
    const int count = Hunspell_suggest(m_reader->handle, &list, bytes.constData());
    QStringList suggestions;
    for (int i = 0; i < count; ++i)
        suggestions.append(m_reader->textOf(list[i]));
    Hunspell_free_list(m_reader->handle, &list, count);
    suggestions.removeDuplicates();
    suggestions.removeAll(QString());
    return suggestions;
}

#else

struct SpellDictionary::Reader
{
};

bool SpellDictionary::isBuiltIn()
{
    return false;
}

SpellDictionary::SpellDictionary(const SpellFiles &) {}

bool SpellDictionary::isRight(const QString &) const
{
    return true;
}

QStringList SpellDictionary::suggestionsFor(const QString &) const
{
    return {};
}

#endif

SpellDictionary::~SpellDictionary() = default;

} // namespace quillmere
