#include "asking/forms/AskToWrite.h"

#include "asking/LineCount.h"
#include "asking/Prompts.h"
#include "files/RunTimeError.h"
#include "files/TextFile.h"
#include "markup/LineDifference.h"

#include <QDir>
#include <QObject>

#include <algorithm>

namespace quillmere {

namespace {

constexpr qsizetype kMostCompared = 8'000'000; // bytes or characters: a person waits for the question

// A name may hold line breaks and marks that turn the letters behind them round.
QString plainly(QString path)
{
    std::replace_if(
        path.begin(), path.end(), [](QChar c) { return !c.isPrint() && !c.isSurrogate(); },
        QChar(QChar::ReplacementCharacter));
    return path;
}

// Empty lines at the end are white space as the indentation is.
QStringView withoutBlankEnd(QStringView text)
{
    while (!text.isEmpty() && text.back().isSpace())
        text.chop(1);
    return text;
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

QString savingFacts(const QString &path, const QString &newText, CodePageRule rule)
{
    const QString name = plainly(QDir::toNativeSeparators(path));
    if (newText.size() > kMostCompared)
        return name;
    try {
        const std::optional<QByteArray> bytes = LoadBytes(path, {}, kMostCompared);
        if (!bytes)
            return QObject::tr("%1\nis a new file.").arg(name);
        const QString now = decodeText(*bytes, rule).text;
        const LineDifference difference =
            compareLines(withoutBlankEnd(now), withoutBlankEnd(newText), 0, Indentation::Ignored);
        const qsizetype indented = onlyIndented(now, newText);
        QString says =
            difference.hunks.isEmpty() ? QObject::tr("No line changes.") : lineCountText(difference);
        if (indented > 0)
            says += u' ' + indentedLinesText(indented);
        return name + u'\n' + says;
    } catch (const RunTimeError &) {
        return name; // saving says what is wrong with it
    }
}

bool askToWrite(Files &files, Prompts &prompts, const WriteQuestion &question, No no)
{
    const bool writes = question.step == Files::Step::Save;
    const QString text = writes ? files.loaded().savingQuestion(question.text, question.path) : question.text;
    QString facts =
        question.newText ? savingFacts(question.path, *question.newText, question.rule) : QString();
    if (question.newText && no == No::IsIgnored)
        facts +=
            QObject::tr("\nIt is saved whatever you answer. \"Restore\" in the File menu brings back the "
                        "file as it is now.");
    const bool yes = prompts.askAbout(question.title, text, facts);
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
