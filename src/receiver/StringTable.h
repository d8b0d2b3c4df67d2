#pragma once

#include <QHash>
#include <QString>

namespace quillmere {

// What the strings of a language stand for, as the receiver looks them up.
class StringTable
{
public:
    // Of two translations of one source the first counts.
    void add(const QString &source, const QString &translation)
    {
        if (!m_translations.contains(source))
            m_translations.insert(source, translation);
    }
    // Empty for a source that has none.
    QString of(const QString &source) const
    {
        const QString written = m_translations.value(source);
        return written.isEmpty() ? m_translations.value(source.trimmed()) : written;
    }

private:
    QHash<QString, QString> m_translations;
};

} // namespace quillmere
