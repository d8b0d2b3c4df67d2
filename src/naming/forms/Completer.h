#pragma once

#include "controls/LateWork.h"
#include "naming/Candidates.h"
#include "naming/Completion.h"

#include <QThreadPool>

#include <array>
#include <memory>

class QCompleter;
class QKeyEvent;
class QListView;

namespace quillmere {

class Commands;
class CompletionModel;
class LiveIndex;
class NameFacts;
class Pictures;
class SourceBox;

// Offers names while one types in the source. The list opens by itself where what is to be typed is known,
// and anywhere on Ctrl+Space or Alt+/. Keys go on to the source while it is open; Tab takes an entry, Enter
// only where an arrow key or a letter has said before that the list is wanted.
class Completer : public QObject
{
    Q_OBJECT

public:
    Completer(SourceBox &source, LiveIndex &live, NameFacts &facts, QObject *parent = nullptr);
    ~Completer() override;

    // The mark that turns the opening by itself off. It is remembered.
    void addCommands(Commands &menu);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isOpen() const;
    bool sourceKey(const QKeyEvent &key);
    bool popupKey(QKeyEvent &key);
    void keyHandled(bool isText);
    void refresh();
    FileRole roleOfOpenFile() const;
    // nullptr where the names are not listed yet.
    std::shared_ptr<const Candidates> candidatesFor(const Completion &completion) const;
    bool isTaken(const Candidates &candidates, const std::vector<qint32> &rows) const;
    void openList(std::shared_ptr<const Candidates> candidates, std::vector<qint32> rows);
    void closeUpBelow(int caretTop);
    void close();
    void ask();
    void take(int row);
    void listNames();

    SourceBox &m_source;
    LiveIndex &m_live;
    CompletionModel *m_model;
    QCompleter *m_completer;
    QListView *m_list; // the completer's
    Pictures *m_pictures;
    LateWork m_outlining;
    Completion m_found;
    bool m_isOn = true;
    bool m_isAsked = false;   // the list was opened by the person
    bool m_isWaiting = false; // for names that are being listed
    bool m_mayEnter = false;  // Enter takes an entry
    bool m_isTyped = false;   // the key at work types something
    qint32 m_escaped = -1;    // where the word begins for which the list was closed

    struct Names
    {
        qint64 stamp = -1;
        std::shared_ptr<const Candidates> names;
    };
    std::array<Names, kNameKinds> m_names;
    QThreadPool m_worker;
};

} // namespace quillmere
