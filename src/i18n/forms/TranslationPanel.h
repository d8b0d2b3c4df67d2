#pragma once

#include "i18n/TranslationMemory.h"

#include <QHash>
#include <QPersistentModelIndex>
#include <QStringList>
#include <QWidget>

#include <array>
#include <functional>
#include <optional>

class QComboBox;
class QLabel;
class QPlainTextEdit;

namespace quillmere {

class ListRows;
class ListView;
class SuggestionList;
class Talk;
class TranslationEdit;

// The selected string below the list of strings: its source, its translation to be typed over several lines,
// and what other languages say. What is typed goes into the row when it is taken, and at the latest when
// another row, another control or another program takes over; what the row cannot hold waits here for its row
// to be selected again.
class TranslationPanel : public QWidget
{
    Q_OBJECT

public:
    // `file` gives the path of the language file whose strings the rows are.
    TranslationPanel(ListRows &strings, ListView &list, std::function<QString()> file, Talk &talk,
                     QWidget *parent);

    // Puts what is typed into its row, the check mark as it was. Where the row cannot hold it, it is kept.
    void takeTyped();
    // What is typed and not in its row yet, as the row would hold it; nothing where it could not.
    std::optional<QString> typed() const;
    // Whether nothing gets lost where the program is left now; asks where something does.
    bool mayClose();

    // The languages to choose from for the boxes beside.
    void setLanguages(const QStringList &names);
    // Gives a source in a language, by its name.
    std::function<QString(const QString &language, const QString &source)> translationIn;
    // Gives what is wrong with a row.
    std::function<QStringList(int row)> problemsOf;
    // What these two give may be something else now.
    void refresh();
    // Answers suggestionsWanted().
    void showSuggestions(int row, const QList<Suggestion> &suggestions);

    // 0-based row that is shown, -1 for none.
    int row() const { return m_row.isValid() ? m_row.row() : -1; }
    TranslationEdit *txtTranslation;

signals:
    void nextWanted();
    // Translations are looked for that were made elsewhere; for row -1 none are any more.
    void suggestionsWanted(int row);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    struct Beside
    {
        QComboBox *language;
        QPlainTextEdit *text;
    };

    QLayout *makeBeside();
    void connectEdit();
    void showRow(int row);
    void rowsChanged();
    bool isTyped() const;
    void take();
    void put(const QString &typed);
    void putSuggestion(const QString &translation);
    void keepDraft();
    void showNote();
    QString key() const { return m_file + u'\n' + m_source; }

    ListRows &m_strings;
    ListView &m_list;
    std::function<QString()> m_fileNow;
    Talk &m_talk;
    QPlainTextEdit *txtSource;
    QLabel *lblPanelNote;
    std::array<Beside, 2> m_beside;
    SuggestionList *m_suggestions;
    QPersistentModelIndex m_row;
    QString m_file, m_source; // of the row
    QString m_before;         // what the box began with, or has put into the row
    QHash<QString, QString> m_drafts;
};

} // namespace quillmere
