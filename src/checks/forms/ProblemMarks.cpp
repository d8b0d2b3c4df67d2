#include "checks/forms/ProblemMarks.h"

#include "checks/forms/LiveCheck.h"
#include "source/forms/SourceBox.h"
#include "source/forms/SourceMarks.h"

namespace quillmere {

namespace {

constexpr qsizetype kMostMarks = 5000; // a window with more shows nothing but marks

} // namespace

ProblemMarks::ProblemMarks(LiveCheck &check, SourceBox &source, QObject *parent) : QObject(parent)
{
    connect(&check, &LiveCheck::changed, this, [&check, &source] {
        if (check.isBehind())
            return;
        QList<SourceMark> marks;
        const QList<Problem> problems = check.openProblems();
        for (const Problem &problem : problems.first(std::min(problems.size(), kMostMarks)))
            marks.append({problem.range.start, problem.range.size(), int(problem.severity())});
        source.marks().show(marks);
    });
}

} // namespace quillmere
