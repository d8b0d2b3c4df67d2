#pragma once

#include "files/TextFile.h"
#include "rows/ListRows.h"

#include <QObject>
#include <QString>

namespace quillmere {

class Files;

// A file that is open to be edited and saved: a window, a catalogue, a language file. It knows how its bytes
// became text, so that they become bytes again the same way, whatever is opened in between.
class Document
{
public:
    // No file: no path, no text.
    Document() = default;
    // Reads a file; one that is not there gives an empty text. `theme` is the folder of the theme that it was
    // opened from, empty for a file that belongs to none. From now on changes that other programs make to the
    // file are known.
    static Document open(Files &files, const QString &path, const QString &theme = {},
                         CodePageRule rule = CodePageRule::Automatic, const Progress &progress = {});

    // The same file as it is now, by the same rule.
    Document openedAgain(Files &files) const { return open(files, m_path, m_theme, m_encoding.rule); }

    const QString &path() const { return m_path; }
    const QString &theme() const { return m_theme; }
    // As loaded, typed or saved.
    const QString &text() const { return m_text; }
    void setText(const QString &text) { m_text = text; }
    const Encoding &encoding() const { return m_encoding; }
    // The text in hand comes from elsewhere, and became text like this.
    void setEncoding(const Encoding &encoding) { m_encoding = encoding; }
    // Whether something was changed since the file was loaded or saved.
    bool isEdited() const { return m_edited; }
    void setEdited(bool edited) { m_edited = edited; }

    // What was read is saved to another file from now on, to which this theme has led.
    void setPath(const QString &path, const QString &theme)
    {
        m_path = path;
        m_theme = theme;
    }
    // The text of the file as it is now. That another program changed it stays known, and is said before it
    // is saved.
    const QString &readAgain();
    // Replaces the file by this text. RunTimeError says why that fails, and nothing has changed then.
    void save(Files &files, const QString &text);
    // The same for a file of the program's own.
    void saveOwn(Files &files, const QString &text);

private:
    void saved(CodePage page, const QString &text);

    QString m_path;
    QString m_theme;
    QString m_text;
    Encoding m_encoding;
    bool m_edited = false;
};

// A document whose content stands in the rows of a list, and nowhere else: it is edited while they say
// something else than its file.
class RowsDocument : public Document
{
public:
    // Whoever keeps what is not saved from getting lost.
    class Keeper
    {
    public:
        virtual ~Keeper() = default;
        // Other rows are about to take the place of these. What it throws lets these stay.
        virtual void keep() = 0;
        virtual void replaced() = 0;
        virtual void saved() = 0;
    };

    // The rows must outlive the document.
    explicit RowsDocument(ListRows &rows);

    const QString &text() const = delete;
    // Has the file and the rows of another from now on.
    void replace(const Document &file, QList<ListRows::Row> rows);
    // See Document::save.
    void save(Files &files, const QString &text);
    // An edit that was taken back leaves nothing to save. The rows are compared when this is asked for.
    bool isEdited() const;

    ListRows &rows() const { return m_rows; }
    // Must outlive the document, unless another takes its place.
    void setKeeper(Keeper *keeper) { m_keeper = keeper; }
    // Has what is not saved kept now; RunTimeError says why it cannot be.
    void keep();

private:
    ListRows &m_rows;
    QList<ListRows::Row> m_saved; // what the file says
    mutable bool m_isCompared = true, m_differs = false;
    Keeper *m_keeper = nullptr;
    QObject m_listener; // ends the connection with the document
};

} // namespace quillmere
