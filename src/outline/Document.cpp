#include "outline/Document.h"

#include "files/Files.h"
#include "rows/RowsText.h"

#include <utility>

namespace quillmere {

Document Document::open(Files &files, const QString &path, const QString &theme, CodePageRule rule,
                        const Progress &progress)
{
    const DecodedText file = files.loaded().load(path, rule, progress);
    Document opened;
    opened.m_path = path;
    opened.m_theme = theme;
    opened.m_text = file.text;
    opened.m_encoding = {file.page, rule};
    return opened;
}

const QString &Document::readAgain()
{
    const DecodedText file = LoadText(m_path, m_encoding.rule);
    m_text = file.text;
    m_encoding.page = file.page;
    return m_text;
}

void Document::save(Files &files, const QString &text)
{
    saved(files.save(m_path, text, m_theme, m_encoding), text);
}

void Document::saveOwn(Files &files, const QString &text)
{
    saved(files.saveOwn(m_path, text, m_encoding), text);
}

void Document::saved(CodePage page, const QString &text)
{
    m_encoding.page = page;
    m_text = text;
    m_edited = false;
}

RowsDocument::RowsDocument(ListRows &rows) : m_rows(rows)
{
    QObject::connect(&rows, &ListRows::edited, &m_listener, [this] {
        setEdited(true);
        m_isCompared = false;
    });
}

bool RowsDocument::isEdited() const
{
    if (!Document::isEdited())
        return false;
    if (!std::exchange(m_isCompared, true))
        m_differs = !isSameButForChecks(m_rows.rows(), m_saved);
    return m_differs;
}

void RowsDocument::keep()
{
    if (m_keeper)
        m_keeper->keep();
}

void RowsDocument::replace(const Document &file, QList<ListRows::Row> rows)
{
    keep();
    Document::operator=(file);
    setText({});
    m_saved = rows;
    m_rows.assign(std::move(rows));
    if (m_keeper)
        m_keeper->replaced();
}

void RowsDocument::save(Files &files, const QString &text)
{
    Document::save(files, text);
    setText({});
    m_saved = m_rows.rows();
    if (m_keeper)
        m_keeper->saved();
}

} // namespace quillmere
