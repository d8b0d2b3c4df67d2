#include "commands/CommandLine.h"

#include "commands/CommandHelp.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>

#include <algorithm>

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

constexpr int kMostJobs = 16; // each is a process of a hundred megabytes
constexpr int kMostColumns = 100;

// A number from 1 to `most`; 0 for anything else.
int numberIn(const QString &text, int most)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    return isNumber && number >= 1 && number <= most ? number : 0;
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
    const QString view = parser.value(QStringLiteral("view"));
    line.receiver = view == u"receiver";
    if (!line.receiver && view != u"preview")
        return fail(tr("--view is preview or receiver, not \"%1\".").arg(view));
    if (!line.receiver && (parser.isSet(QStringLiteral("language")) || parser.isSet(QStringLiteral("state"))))
        return fail(tr("--language and --state go with --view receiver."));
    line.language = parser.value(QStringLiteral("language"));
    const QString state = parser.value(QStringLiteral("state"));
    if (!QStringList{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}.contains(state))
        return fail(tr("--state is 1, 2 or 3, not \"%1\".").arg(state));
    line.state = state.toInt();
    const QString jobs = parser.value(QStringLiteral("jobs"));
    line.jobs = numberIn(jobs, kMostJobs);
    if (line.jobs == 0)
        return fail(tr("--jobs is 1 to %1, not \"%2\".").arg(kMostJobs).arg(jobs));
    return line;
}

CommandLine sheetLine(const QCommandLineParser &parser, const QStringList &words)
{
    CommandLine line;
    line.action = CommandLine::Action::Sheet;
    if (words.size() != 2)
        return fail(words.size() < 2 ? tr("sheet: which theme?") : tr("One theme at a time, please."));
    if (!parser.isSet(QStringLiteral("out")))
        return fail(tr("sheet: --out FILE is missing."));
    line.theme = absolute(words.at(1));
    line.out = absolute(parser.value(QStringLiteral("out")));
    const QString suffix = QFileInfo(line.out).suffix().toLower();
    if (suffix != u"png" && suffix != u"html" && suffix != u"pdf")
        return fail(tr("sheet: --out is a file named .png, .html or .pdf, not \"%1\".").arg(line.out));
    const QString columns = parser.value(QStringLiteral("columns"));
    line.columns = numberIn(columns, kMostColumns);
    if (line.columns == 0)
        return fail(tr("--columns is 1 to %1, not \"%2\".").arg(kMostColumns).arg(columns));
    line.language = parser.value(QStringLiteral("language"));
    return line;
}

CommandLine compareLine(const QCommandLineParser &parser, const QStringList &words)
{
    CommandLine line;
    line.action = CommandLine::Action::Compare;
    if (words.size() != 3)
        return fail(tr("compare: which two themes?"));
    if (!parser.isSet(QStringLiteral("out")))
        return fail(tr("compare: --out DIR is missing."));
    line.theme = absolute(words.at(1));
    line.other = absolute(words.at(2));
    line.out = absolute(parser.value(QStringLiteral("out")));
    return line;
}

// The place of a word among others; nothing for one that is not there.
std::optional<int> placeIn(const QStringList &words, const QString &word)
{
    const qsizetype place = words.indexOf(word);
    return place < 0 ? std::nullopt : std::optional(int(place));
}

CommandLine checkLine(const QCommandLineParser &parser, const QStringList &words)
{
    static const QStringList formats = {QStringLiteral("text"), QStringLiteral("json"),
                                        QStringLiteral("sarif")};
    static const QStringList severities = {nameOf(Severity::Error), nameOf(Severity::Warning),
                                           nameOf(Severity::Note)};
    CommandLine line;
    line.action = CommandLine::Action::Check;
    if (words.size() != 2)
        return fail(words.size() < 2 ? tr("check: which theme?") : tr("One theme at a time, please."));
    line.theme = absolute(words.at(1));
    const QString format = parser.value(QStringLiteral("format"));
    const std::optional<int> formatPlace = placeIn(formats, format);
    if (!formatPlace)
        return fail(tr("--format is text, json or sarif, not \"%1\".").arg(format));
    line.format = ReportFormat(*formatPlace);
    const QString failOn = parser.value(QStringLiteral("fail-on"));
    const std::optional<int> severity = placeIn(severities, failOn);
    if (!severity)
        return fail(tr("--fail-on is error, warning or note, not \"%1\".").arg(failOn));
    line.failOn = Severity(*severity);
    line.textFit = parser.isSet(QStringLiteral("text-fit"));
    for (const QString &text : parser.values(QStringLiteral("ignore"))) {
        const std::optional<IgnoredRule> ignored = ignoredRule(text);
        if (!ignored)
            return fail(tr("--ignore: there is no rule \"%1\".").arg(text));
        line.ignored.append(*ignored);
    }
    return line;
}

// `export` and `import`, whose files tell their format by their names.
CommandLine exchangeLine(const QCommandLineParser &parser, const QStringList &words)
{
    const bool isExport = words.at(0) == u"export";
    CommandLine line;
    line.action = isExport ? CommandLine::Action::Export : CommandLine::Action::Import;
    if (words.size() != (isExport ? 3 : 4))
        return fail(isExport ? tr("export: export THEME LANGUAGE --out FILE")
                             : tr("import: import THEME LANGUAGE FILE"));
    line.theme = absolute(words.at(1));
    line.language = words.at(2);
    if (isExport && !parser.isSet(QStringLiteral("out")))
        return fail(tr("export: --out FILE is missing."));
    if (isExport)
        line.out = absolute(parser.value(QStringLiteral("out")));
    else
        line.file = words.at(3);
    const QString &file = isExport ? line.out : line.file;
    const std::optional<ExchangeFormat> format = exchangeFormatOf(file);
    if (!format)
        return fail(tr("The name of the file must end in .po, .xlf, .xliff, .csv or .tsv, unlike \"%1\".")
                        .arg(QFileInfo(file).fileName()));
    line.exchange = *format;
    line.dryRun = parser.isSet(QStringLiteral("dry-run"));
    return line;
}

struct Options
{
    QList<QCommandLineOption> all;

    void addOption(const QCommandLineOption &option) { all.append(option); }
};

bool isAnySet(const QCommandLineParser &parser, std::initializer_list<const char *> names)
{
    return std::any_of(names.begin(), names.end(),
                       [&](const char *name) { return parser.isSet(QLatin1String(name)); });
}

void addCheckOptions(Options &options)
{
    options.addOption({QStringLiteral("format"), tr("check: text, json or sarif; text by default."),
                       QStringLiteral("FORMAT"), QStringLiteral("text")});
    options.addOption({QStringLiteral("ignore"),
                       tr("check: leaves out a rule, or a rule for one name; can be repeated."),
                       QStringLiteral("RULE[:NAME]")});
    options.addOption({QStringLiteral("fail-on"),
                       tr("check: error, warning or note: what makes the exit status 1; error by default."),
                       QStringLiteral("SEVERITY"), QStringLiteral("error")});
    options.addOption({QStringLiteral("text-fit"),
                       tr("check: measures the texts of all languages too, and says which are cut.")});
}

void addReceiverOptions(Options &options)
{
    options.addOption({QStringLiteral("view"),
                       tr("render: preview, or receiver for what a viewer sees; preview by default."),
                       QStringLiteral("VIEW"), QStringLiteral("preview")});
    options.addOption(
        {QStringLiteral("language"),
         tr("render, sheet, receiver view: a language of the theme; texts as written by default."),
         QStringLiteral("NAME")});
    options.addOption(
        {QStringLiteral("state"),
         tr("render, receiver view: 1, 2 or 3, the entry of each list of colours; 1 by default."),
         QStringLiteral("STATE"), QStringLiteral("1")});
}

void describe(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        tr("Edits the theme skins of television receivers.\n\n"
           "  quillmere [THEME]                                 opens the editor, on a theme folder\n"
           "  quillmere render THEME [WINDOW...] --out DIR      draws windows to DIR/NAME.png\n"
           "  quillmere sheet THEME --out FILE                  draws all windows into one file\n"
           "  quillmere compare THEME OTHER-THEME --out DIR     shows which windows differ\n"
           "  quillmere check THEME                             says what is wrong with a theme\n"
           "  quillmere export THEME LANGUAGE --out FILE        writes a language for its translator\n"
           "  quillmere import THEME LANGUAGE FILE              reads it again; FILE is .po, .xlf, .csv or "
           ".tsv"));
}

void addDrawingOptions(Options &options)
{
    options.addOption({QStringLiteral("out"),
                       tr("render, compare: folder for the pictures, made where it is missing; "
                          "sheet: file, .png, .html or .pdf; export: file, .po, .xlf, .csv or .tsv."),
                       QStringLiteral("OUT")});
    options.addOption({QStringLiteral("size"),
                       tr("render: 1024x576 or 1280x720; the theme's own size by default."),
                       QStringLiteral("SIZE")});
    options.addOption({QStringLiteral("columns"),
                       tr("sheet: how many windows stand side by side; 4 by default."), QStringLiteral("N"),
                       QStringLiteral("4")});
    options.addOption({QStringLiteral("jobs"),
                       tr("render: how many pages are drawn at once, 1 to %1; 1 by default.").arg(kMostJobs),
                       QStringLiteral("N"), QStringLiteral("1")});
}

CommandLine lineOf(const QCommandLineParser &parser)
{
    const QStringList words = parser.positionalArguments();
    const bool isRender = words.value(0) == u"render";
    const bool isSheet = words.value(0) == u"sheet";
    const bool isCompare = words.value(0) == u"compare";
    const bool isCheck = words.value(0) == u"check";
    const bool isExport = words.value(0) == u"export";
    const bool isImport = words.value(0) == u"import";
    if (!isRender && !isSheet && !isCompare && !isExport && parser.isSet(QStringLiteral("out")))
        return fail(tr("--out goes with render, sheet, compare and export."));
    if (!isRender && !isSheet && parser.isSet(QStringLiteral("language")))
        return fail(tr("--language goes with render and sheet."));
    if (!isRender && isAnySet(parser, {"size", "view", "state", "jobs"}))
        return fail(tr("--size, --view, --state and --jobs go with render."));
    if (!isSheet && parser.isSet(QStringLiteral("columns")))
        return fail(tr("--columns goes with sheet."));
    if (!isImport && parser.isSet(QStringLiteral("dry-run")))
        return fail(tr("--dry-run goes with import."));
    if (!isCheck && isAnySet(parser, {"format", "ignore", "fail-on", "text-fit"}))
        return fail(tr("--format, --ignore, --fail-on and --text-fit go with check."));
    if (isRender)
        return renderLine(parser, words);
    if (isSheet)
        return sheetLine(parser, words);
    if (isCompare)
        return compareLine(parser, words);
    if (isCheck)
        return checkLine(parser, words);
    if (isExport || isImport)
        return exchangeLine(parser, words);
    if (words.size() > 1)
        return fail(tr("One theme at a time, please."));
    CommandLine line;
    if (!words.isEmpty()) {
        line.theme = absolute(words.first());
        if (!QFileInfo(line.theme).isDir())
            return fail(tr("There is no folder %1.").arg(line.theme));
    }
    return line;
}

CommandLine printLine(const QString &text)
{
    CommandLine line;
    line.action = CommandLine::Action::Print;
    line.text = text;
    return line;
}

} // namespace

CommandLine parseCommandLine(const QStringList &arguments)
{
    QCommandLineParser parser;
    describe(parser);
    // Qt's own would bring --help-all along, and what is printed here says all there is.
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  tr("Displays help on commandline options."));
    parser.addOption(help);
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption verbose(QStringLiteral("verbose"),
                                     tr("Prints what happens, which helps to find a fault."));
    parser.addOption(verbose);
    Options options;
    addDrawingOptions(options);
    addReceiverOptions(options);
    addCheckOptions(options);
    options.addOption({QStringLiteral("dry-run"),
                       tr("import: only lists what would change; the exit status is 1 if something would.")});
    parser.addOptions(options.all);
    parser.addPositionalArgument(QStringLiteral("THEME"), tr("A folder named \"theme\"."),
                                 QStringLiteral("[THEME]"));

    if (!parser.parse(arguments))
        return fail(parser.errorText());
    const QString command = parser.positionalArguments().value(0);
    const QString ofCommand =
        parser.isSet(help) ? helpOf(command, options.all + QList{help, verbose}) : QString();
    CommandLine line = !ofCommand.isEmpty()    ? printLine(ofCommand)
                       : parser.isSet(help)    ? printLine(parser.helpText())
                       : parser.isSet(version) ? printLine(QCoreApplication::applicationName() + u' ' +
                                                           QCoreApplication::applicationVersion() + u'\n')
                                               : lineOf(parser);
    line.isVerbose = parser.isSet(verbose);
    return line;
}

} // namespace quillmere
