#include "commands/CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>

namespace quillmere {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("CommandLine", text);
}

CommandLine fail(const QString &text)
{
    CommandLine line;
    line.action = CommandLine::Action::Fail;
    line.text = text;
    return line;
}

QString absolute(const QString &path)
{
    return QDir::toNativeSeparators(
        QDir::cleanPath(QFileInfo(QDir::fromNativeSeparators(path)).absoluteFilePath()));
}

CommandLine renderLine(const QCommandLineParser &parser, QStringList words)
{
    CommandLine line;
    line.action = CommandLine::Action::Render;
    words.removeFirst();
    if (words.isEmpty())
        return fail(tr("render: which theme?"));
    if (!parser.isSet(QStringLiteral("out")))
        return fail(tr("render: --out DIR is missing."));
    line.theme = absolute(words.takeFirst());
    line.windows = words;
    line.out = absolute(parser.value(QStringLiteral("out")));
    const QString size = parser.value(QStringLiteral("size"));
    if (size == u"1024x576")
        line.size = Screen::S1024x576;
    else if (size == u"1280x720")
        line.size = Screen::S1280x720;
    else if (!size.isEmpty())
        return fail(tr("--size is 1024x576 or 1280x720, not \"%1\".").arg(size));
    return line;
}

} // namespace

CommandLine parseCommandLine(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        tr("Edits the theme skins of television receivers.\n\n"
           "  quillmere [THEME]                                 opens the editor, on a theme folder\n"
           "  quillmere render THEME [WINDOW...] --out DIR      draws windows to DIR/NAME.png"));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    parser.addOption({QStringLiteral("out"), tr("render: folder for the pictures, made where it is missing."),
                      QStringLiteral("DIR")});
    parser.addOption({QStringLiteral("size"),
                      tr("render: 1024x576 or 1280x720; the theme's own size by default."),
                      QStringLiteral("SIZE")});
    parser.addPositionalArgument(QStringLiteral("THEME"), tr("A folder named \"theme\"."),
                                 QStringLiteral("[THEME]"));

    if (!parser.parse(arguments))
        return fail(parser.errorText());
    CommandLine line;
    if (parser.isSet(help) || parser.isSet(version)) {
        line.action = CommandLine::Action::Print;
        line.text = parser.isSet(help) ? parser.helpText()
                                       : QCoreApplication::applicationName() + u' ' +
                                             QCoreApplication::applicationVersion() + u'\n';
        return line;
    }
    const QStringList words = parser.positionalArguments();
    if (words.value(0) == u"render")
        return renderLine(parser, words);
    if (parser.isSet(QStringLiteral("out")) || parser.isSet(QStringLiteral("size")))
        return fail(tr("--out and --size go with render."));
    if (words.size() > 1)
        return fail(tr("One theme at a time, please."));
    if (!words.isEmpty()) {
        line.theme = absolute(words.first());
        if (!QFileInfo(line.theme).isDir())
            return fail(tr("There is no folder %1.").arg(line.theme));
    }
    return line;
}

} // namespace quillmere
