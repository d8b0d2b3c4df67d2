#include "app/ThemeEditing.h"

#include "app/OpenDocument.h"
#include "asking/Talk.h"
#include "asking/forms/AskToWrite.h"
#include "files/Paths.h"
#include "source/forms/SourceBox.h"
#include "theme/ThemeProject.h"

#include <QPointer>
#include <QScopeGuard>
#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace quillmere {

// The box takes the new text when everything else has changed: that draws the page, and once is enough.
class ThemeEditing::Source : public OpenText
{
public:
    explicit Source(SourceBox &box) : m_box(box) {}
    QString text() const override { return m_box.text(); }
    void apply(const QList<RangeChange> &changes) override { m_after = changedText(m_box.text(), changes); }
    // False where there is none.
    bool takeText()
    {
        const std::optional<QString> after = std::exchange(m_after, {});
        if (!after)
            return false;
        const bool wasModified = isModified();
        const QString before = m_box.text();
        m_box.rewrite(*after);
        if (!wasModified)
            m_saved = {before, m_box.document()};
        else if (m_saved.document == m_box.document() && m_saved.text == m_box.text())
            m_box.document()->setModified(false);
        return true;
    }
    bool isModified() const { return m_box.document()->isModified(); }
    void fileWritten() { m_saved = {}; }

private:
    SourceBox &m_box;
    std::optional<QString> m_after;
    // The text of the last edit that found nothing unsaved. What takes that edit back has nothing to save.
    struct
    {
        QString text;
        QPointer<QTextDocument> document; // another window brings its own
    } m_saved;
};

class ThemeEditing::Rows : public OpenRows
{
public:
    explicit Rows(const RowsDocument &document) : m_document(document) {}
    const QString &path() const { return m_document.path(); }
    bool isEdited() const { return m_document.isEdited(); }
    bool isEmpty() const { return m_document.rows().isEmpty(); }
    QList<ListRows::Row> rows() const override { return m_document.rows().rows(); }
    void apply(const QList<RowChange> &changes) override
    {
        if (const auto changed = changedRows(rows(), changes))
            m_document.rows().edit(*changed);
    }

private:
    const RowsDocument &m_document;
};

ThemeEditing::ThemeEditing(SourceBox &source, OpenDocument &document, ThemeProject &theme, Files &files,
                           Talk &talk, QObject *parent)
    : QObject(parent), m_document(document), m_theme(theme), m_files(files), m_talk(talk),
      m_source(std::make_unique<Source>(source)), m_images(std::make_unique<Rows>(theme.images.document)),
      m_colours(std::make_unique<Rows>(theme.colours.document)),
      m_strings(std::make_unique<Rows>(theme.language.document))
{
    files.onWritten(this, [this](const QString &path) {
        if (!m_isApplying && isOpenText(path)) // an edit gives it another name at most
            m_source->fileWritten();
    });
}

ThemeEditing::~ThemeEditing() = default;

bool ThemeEditing::isOpenText(const QString &path) const
{
    const QString &open = m_document.path();
    return !open.isEmpty() && (path == open || isSameFile(path, open));
}

ThemeEditing::Rows *ThemeEditing::rowsAt(const QString &path) const
{
    for (Rows *rows : {m_images.get(), m_colours.get(), m_strings.get()}) {
        if (!rows->isEmpty() && !rows->path().isEmpty() &&
            (path == rows->path() || isSameFile(path, rows->path())))
            return rows;
    }
    return nullptr;
}

std::optional<QList<ListRows::Row>> ThemeEditing::openRows(const QString &path) const
{
    const Rows *rows = rowsAt(path);
    return rows ? std::optional(rows->rows()) : std::nullopt;
}

bool ThemeEditing::isUnsaved(const QString &path) const
{
    const Rows *rows = rowsAt(path);
    return rows ? rows->isEdited() : isOpenText(path) && m_source->isModified();
}

bool ThemeEditing::mayWrite(const QStringList &closed, const ThemeEdit &edit) const
{
    const auto may = [this](const QString &path, Files::Step step) {
        return quillmere::mayWrite(m_files, m_talk, {tr("Change"), {}, path, m_theme.folder(), step});
    };
    using Whole = ThemeEdit::WholeBytes;
    return std::ranges::all_of(closed, [&](const QString &path) { return may(path, Files::Step::Save); }) &&
           std::ranges::all_of(edit.created(),
                               [&](const Whole &file) { return may(file.path, Files::Step::Create); }) &&
           std::ranges::all_of(edit.removed(),
                               [&](const Whole &file) { return may(file.path, Files::Step::Delete); });
}

std::optional<ThemeEdit> ThemeEditing::apply(const ThemeEdit &edit)
{
    QStringList closed;
    for (const QString &path : edit.paths()) {
        if (!edit.changesOf(path).isEmpty() && !isOpenText(path))
            closed.append(path);
    }
    if (!mayWrite(closed, edit))
        return std::nullopt;
    emit applying();
    std::optional<ThemeEdit> made;
    const auto tell = qScopeGuard([&] {
        if (made)
            emit this->made(*made);
    });
    const QScopedValueRollback inHand(m_isApplying, true);
    const auto text = [this](const QString &path) { return isOpenText(path) ? m_source.get() : nullptr; };
    const auto rows = [this](const QString &path) { return rowsAt(path); };
    const ThemeEdit inverse = edit.apply({m_files, m_theme.folder(), text, rows, m_theme.rule});
    made = inverse;
    // What follows may fail, and the files are written.
    const auto takeText = qScopeGuard([this] {
        if (!m_source->takeText())
            emit othersChanged();
        emit applied();
    });
    for (const ThemeEdit::Move &move : edit.moves()) {
        if (m_document.path() == move.from)
            m_document.moved(move.to);
    }
    // Lists of which nothing is edited show what their files hold.
    for (const QString &path : closed) {
        if (!rowsAt(path) && m_theme.files().contains(path))
            m_theme.reload(path);
    }
    return inverse;
}

} // namespace quillmere
