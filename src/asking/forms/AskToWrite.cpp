#include "asking/forms/AskToWrite.h"

#include "asking/Prompts.h"

#include <QDir>
#include <QObject>

#include <algorithm>

namespace quillmere {

namespace {

// A name may hold line breaks and marks that turn the letters behind them round.
QString plainly(QString path)
{
    std::replace_if(
        path.begin(), path.end(), [](QChar c) { return !c.isPrint() && !c.isSurrogate(); },
        QChar(QChar::ReplacementCharacter));
    return path;
}

bool allows(Files &files, Prompts &prompts, const WriteQuestion &question, const Files::Place &place)
{
    if (place.mayBeTouched)
        return true;
    const QString what =
        question.step == Files::Step::Delete ? QObject::tr("Not deleted") : QObject::tr("Not written");
    const bool allowed = prompts.askWarily(
        question.title,
        QObject::tr("%1: the theme leads outside its own folder, to\n\n%2\n\nAllow this file to be "
                    "written and deleted until you leave Quillmere?")
            .arg(what, plainly(QDir::toNativeSeparators(place.path))));
    if (allowed)
        files.allow(place.path);
    return allowed;
}

} // namespace

bool askToWrite(Files &files, Prompts &prompts, const WriteQuestion &question, No no)
{
    const bool writes = question.step == Files::Step::Save;
    const bool yes = prompts.ask(
        question.title, writes ? files.loaded().savingQuestion(question.text, question.path) : question.text);
    const Files::Place place = files.place(question.step, question.path, question.theme);
    if (!yes && (no == No::Counts || !place.isInside))
        return false;
    return allows(files, prompts, question, place);
}

bool mayWrite(Files &files, Prompts &prompts, const WriteQuestion &question)
{
    return allows(files, prompts, question, files.place(question.step, question.path, question.theme));
}

} // namespace quillmere
