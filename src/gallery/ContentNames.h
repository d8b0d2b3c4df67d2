#pragma once

#include <QHash>
#include <QString>

namespace quillmere {

// Names for files that are the same wherever their bytes and kind are, so that pages of two themes can be
// told to look the same without being drawn.
class ContentNames
{
public:
    explicit ContentNames(const QString &themeFolder);

    // Starts with "/". Empty, and so is every later answer of certain(), where a page may show the file in
    // another way than by its bytes: it lies elsewhere, cannot be read, or has a name that an address may not
    // take.
    QString of(const QString &path);
    // Of those asked for since this was last asked.
    bool certain();
    // The file that bears the name.
    QString pathOf(const QString &name) const { return m_paths.value(name); }

private:
    QString nameOf(const QString &path) const;

    QString m_root;
    QHash<QString, QString> m_names, m_paths;
    bool m_certain = true;
};

} // namespace quillmere
