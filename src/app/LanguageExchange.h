#pragma once

#include "i18n/LanguageImport.h"

#include <QObject>

class QWidget;

namespace quillmere {

class Commands;
class Files;
class LiveIndex;
class Talk;
class ThemeProject;

// Export and Import of the Language menu: the open language to a file for its translator, and back.
class LanguageExchange : public QObject
{
    Q_OBJECT

public:
    LanguageExchange(ThemeProject &theme, const LiveIndex &index, Files &files, Talk &talk, QWidget &window);

    void addCommands(Commands &menu);

private:
    void mnuLangExport_Click();
    void mnuLangImport_Click();
    // As the catalogue calls it, or its file; RunTimeError where none is open.
    QString languageName() const;
    QList<ExchangeUnit> units() const;
    // Edits of the rows that are still what they were; nothing is saved.
    void take(const QList<ImportChange> &changes);

    ThemeProject &m_theme;
    const LiveIndex &m_index;
    Files &m_files;
    Talk &m_talk;
    QWidget &m_window;
};

} // namespace quillmere
