#include "keeping/forms/KeptRows.h"

#include "files/RunTimeError.h"
#include "i18n/forms/TranslationEdit.h"
#include "i18n/forms/TranslationPanel.h"
#include "keeping/forms/Recovery.h"
#include "theme/ThemeProject.h"

#include <QFileInfo>
#include <QPointer>

#include <utility>

namespace quillmere {

class KeptRows::List : public RowsDocument::Keeper
{
public:
    List(RowsDocument &document, UnsavedKind kind, const QString &name, Files &files, OfferBar &offers,
         Talk &talk)
        : m_document(document), m_name(name),
          m_recovery(recoverableRows(document, kind, name, [this] { return typed ? typed() : std::nullopt; }),
                     files, offers, talk)
    {
        QObject::connect(&document.rows(), &ListRows::edited, &m_recovery, &Recovery::changed);
        document.setKeeper(this);
    }

    void keep() override { m_keptOf = m_recovery.keepNow() ? m_recovery.document() : QString(); }
    void replaced() override
    {
        m_recovery.opened();
        const QString kept = std::exchange(m_keptOf, {});
        if (!kept.isEmpty() && kept != m_document.path())
            m_news = tr("The unsaved %1 of %2 are kept and offered when that is opened again.")
                         .arg(m_name, QFileInfo(kept).fileName());
    }
    void saved() override { m_recovery.saved(); }

    QString takeNews() { return std::exchange(m_news, {}); }
    // Something was typed, or put back.
    void typedChanged()
    {
        const bool isTyped = typed && typed();
        if (std::exchange(m_wasTyped, isTyped) || isTyped)
            m_recovery.changed();
    }
    std::function<std::optional<TypedText>()> typed; // and not in its row yet

private:
    RowsDocument &m_document;
    QString m_name;
    Recovery m_recovery;
    bool m_wasTyped = false;
    QString m_keptOf; // the file whose rows have been kept and are about to go
    QString m_news;
};

KeptRows::KeptRows(ThemeProject &theme, Files &files, OfferBar &offers, Talk &talk, QObject *parent)
    : QObject(parent)
{
    const auto add = [&](RowsDocument &document, UnsavedKind kind, const QString &name) {
        m_lists.push_back(std::make_unique<List>(document, kind, name, files, offers, talk));
    };
    add(theme.images.document, UnsavedKind::Images, tr("images"));
    add(theme.colours.document, UnsavedKind::Colours, tr("colours"));
    add(theme.language.document, UnsavedKind::Translations, tr("translations"));
}

KeptRows::~KeptRows() = default;

void KeptRows::watch(TranslationPanel &panel)
{
    List *translations = m_lists.back().get();
    const QPointer<TranslationPanel> there = &panel; // which goes first
    translations->typed = [there]() -> std::optional<TypedText> {
        const std::optional<QString> text = there ? there->typed() : std::nullopt;
        return text ? std::optional(TypedText{there->row(), 2, *text}) : std::nullopt;
    };
    connect(panel.txtTranslation, &QPlainTextEdit::textChanged, this,
            [translations] { translations->typedChanged(); });
}

QStringList KeptRows::keepAll()
{
    QStringList problems;
    for (const auto &list : m_lists) {
        try {
            list->keep();
        } catch (const RunTimeError &error) {
            problems.append(error.message());
        }
    }
    return problems;
}

QString KeptRows::takeNews()
{
    QStringList news;
    for (const auto &list : m_lists) {
        if (const QString one = list->takeNews(); !one.isEmpty())
            news.append(one);
    }
    return news.join(u' ');
}

} // namespace quillmere
