#pragma once

#include "checks/ThemeCheck.h"
#include "outline/LineStarts.h"
#include "outline/Outline.h"

namespace quillmere {

// A name as it stands in a message: in quotes, without control characters, at most some hundred letters.
QString quoted(QStringView name);

// What the rules of windows look at, and where they put what they find.
class WindowReport
{
public:
    WindowReport(const Outline &outlined, const IndexedFile &indexed, const ThemeIndex &names,
                 const ThemeFacts &known, std::stop_token stopped)
        : outline(outlined), file(indexed), index(names), facts(known), stop(std::move(stopped)),
          used(namesIn(outlined)), m_lines(outlined.text())
    {
    }

    const Outline &outline;
    const IndexedFile &file;
    const ThemeIndex &index;
    const ThemeFacts &facts;
    const std::stop_token stop;
    const std::vector<FoundName> used; // the names in the window
    QList<Problem> problems;

    void add(Rule rule, Range range, const QString &message, const QString &name, const QString &meant = {});

    // Whether an element says something: not one in a comment or a signal.
    static bool counts(const Element &element) { return !element.inComment && !element.inSignal; }
    // The name of a block, and how a message calls it.
    QString blockName(qint32 block) const;
    QString block(qint32 block) const;

private:
    LineStarts m_lines;
};

// A file of rules each.
void checkMarkup(WindowReport &report);
void checkNames(WindowReport &report);
void checkBlocks(WindowReport &report);
void checkTranslations(WindowReport &report);
void checkTextFit(WindowReport &report);

} // namespace quillmere
