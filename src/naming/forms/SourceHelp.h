#pragma once

#include "naming/forms/Completer.h"
#include "naming/forms/Hovers.h"
#include "naming/forms/NameFacts.h"

namespace quillmere {

// What the source box knows of the theme's names: it offers them and tells what they stand for.
class SourceHelp : public QObject
{
    Q_OBJECT

public:
    SourceHelp(SourceBox &source, LiveIndex &live, const ThemeProject &theme, QObject *parent = nullptr)
        : QObject(parent), m_facts(theme, live), hovers(source, live, m_facts),
          m_completer(source, live, m_facts)
    {
    }

    void addCommands(Commands &menu) { m_completer.addCommands(menu); }

private:
    NameFacts m_facts;

public:
    Hovers hovers;

private:
    Completer m_completer;
};

} // namespace quillmere
