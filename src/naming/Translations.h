#pragma once

#include "theme/ThemeIndex.h"

#include <QDateTime>
#include <QHash>

#include <memory>

namespace quillmere {

// What the languages of a theme say for the strings of its windows. A value; copies are cheap.
class Translations
{
public:
    struct Language
    {
        QString name;
        QString path;
    };
    // Reads the files of the languages, or the rows that are not written; takes time. A file that is still as
    // it was when `before` was read is not read again.
    static Translations read(const ThemeSources &sources, const QList<Language> &languages,
                             const Translations &before = {});

    struct Said
    {
        QString language;
        QString text; // empty where the language has none
    };
    // In the order of the languages.
    QList<Said> of(const QString &string) const;
    // The one to show beside a string: the first that is not just the string again, if there is one.
    QString shortly(const QString &string) const;

private:
    using Strings = QHash<QString, QString>;
    struct Read
    {
        Language language;
        QDateTime time; // of the file; none where rows were read
        qint64 size = 0;
        std::shared_ptr<const Strings> strings;
    };

    QList<Read> m_languages;
};

} // namespace quillmere
