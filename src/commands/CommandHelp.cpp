#include "commands/CommandHelp.h"

#include <QCommandLineParser>
#include <QObject>

#include <algorithm>

namespace quillmere {

namespace {

struct Command
{
    const char *name, *arguments, *says, *options;
};

constexpr Command kCommands[] = {
    {"render", "THEME [WINDOW...] --out DIR",
     "Draws the windows of a theme, or those named, to DIR/NAME.png.", "out size view language state jobs"},
    {"sheet", "THEME --out FILE", "Draws all windows of a theme into one file.", "out columns language"},
    {"compare", "THEME OTHER-THEME --out DIR", "Shows which windows of two themes differ.", "out"},
    {"check", "THEME", "Says what is wrong with a theme.", "format ignore fail-on text-fit"},
    {"export", "THEME LANGUAGE --out FILE", "Writes a language of a theme for its translator.", "out"},
    {"import", "THEME LANGUAGE FILE", "Reads the translations of a .po, .xlf, .csv or .tsv file.", "dry-run"},
};

const Command *commandOf(const QString &name)
{
    const auto *found = std::ranges::find_if(
        kCommands, [&name](const Command &each) { return name == QLatin1String(each.name); });
    return found == std::end(kCommands) ? nullptr : found;
}

// Descriptions name the commands that they are about: "render, compare: ...; sheet: ...".
QString aboutCommand(const QString &command, const QString &description)
{
    QStringList told;
    bool isAbout = true;
    for (const QString &part : description.split(QStringLiteral("; "))) {
        const qsizetype colon = part.indexOf(QStringLiteral(": "));
        QStringList others = part.left(std::max<qsizetype>(colon, 0)).split(QStringLiteral(", "));
        const bool isThis = others.contains(command);
        const auto named = others.removeIf([](const QString &name) { return commandOf(name) != nullptr; });
        if (named > 0)
            isAbout = isThis;
        if (!isAbout)
            continue;
        // What is left is said of the command: "receiver view".
        const QString prefix =
            named > 0 && !others.isEmpty() ? others.join(QStringLiteral(", ")) + u": " : QString();
        told.append(named > 0 ? prefix + part.mid(colon + 2) : part);
    }
    QString text = told.join(QStringLiteral("; "));
    return text.endsWith(u'.') ? text : text + u'.';
}

} // namespace

QString helpOf(const QString &command, const QList<QCommandLineOption> &options)
{
    const Command *found = commandOf(command);
    if (!found)
        return {};
    const QStringList known = QString::fromLatin1(found->options).split(u' ');
    QCommandLineParser parser;
    parser.setApplicationDescription(QObject::tr(found->says));
    for (QCommandLineOption option : options) {
        const QString name = option.names().constLast();
        if (!known.contains(name) && name != u"help" && name != u"verbose")
            continue;
        option.setDescription(aboutCommand(command, option.description()));
        parser.addOption(option);
    }
    QString text = parser.helpText();
    // The parser would have the options before the command.
    const qsizetype end = text.indexOf(u'\n');
    const QString first = text.left(end);
    const qsizetype open = first.indexOf(u'[');
    return first.left(open) + command + u' ' + QLatin1String(found->arguments) + u' ' + first.mid(open) +
           text.mid(end);
}

} // namespace quillmere
