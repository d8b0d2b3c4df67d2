#include "checks/CheckedFiles.h"
#include "checks/MadeFont.h"

#include <QRandomGenerator>
#include <QTest>

// Random themes without a fault, and their twins with some: the first give nothing, of the others every fault
// is told at its line.

namespace {

using namespace quillmere;
using namespace Qt::StringLiterals;
using Lines = QMap<QString, QStringList>;

constexpr int kThemes = 200;
constexpr int kFaults = 12; // in each
constexpr int kSpare = 3;   // lines to plant faults on, in every file but windows
constexpr int kFirstOfBlocks = 2;

class RandomTheme
{
public:
    explicit RandomTheme(quint32 seed) : m_random(seed)
    {
        m_lines[u"theme.xml"_s] = {u"<theme><config>"_s,
                                   u"<file_widget>widget/widget.xml</file_widget>"_s,
                                   u"<file_image>images/image.xml</file_image>"_s,
                                   u"<file_color>color.xml</file_color>"_s,
                                   u"<file_font>font.xml</file_font>"_s,
                                   u"<file_i18n>i18n/i18n.xml</file_i18n>"_s,
                                   u"<spare></spare>"_s,
                                   u"</config></theme>"_s};
        QStringList &style = m_lines[u"style.xml"_s];
        style.append(u"<interface>"_s);
        for (int i = 0; i < below(8) + 2; ++i) {
            add("images/image.xml", u"<image id = \"img_%1\">p/%1.png</image>"_s.arg(i));
            m_lines[u"images/p/%1.png"_s.arg(i)] = {u"%1x%1"_s.arg(i + 5)};
            add("color.xml", u"<color name=\"col_%1\">#00000%1</color>"_s.arg(i));
            add("font.xml", u"<font><name>font_%1</name><file>f.ttf</file></font>"_s.arg(i));
            style.append(u"<widget name=\"s%1\"><img>img_%1</img><font>font_%1</font>"
                         "<backcolor>[col_%1,col_%1,col_%1]</backcolor></widget>"_s.arg(i));
            ++m_names;
        }
        add("images/image.xml", u"<image id=\"large\">p/large.png</image>"_s);
        m_lines[u"images/p/large.png"_s] = {u"300x300"_s};
        m_lines[u"images/damaged.png"_s] = {u"no picture"_s};
        style.append(u"<widget><img>large</img></widget>"_s);
        style.append(u"</interface>"_s);
        for (int i = 0; i < kSpare; ++i) {
            for (const char *file : {"images/image.xml", "color.xml", "font.xml"})
                add(file, u"<spare/>"_s);
        }
        add("widget/widget.xml", u"<interface><width>1280</width><height>720</height>"_s);
        for (int language = 0; language < 2; ++language) {
            add("i18n/i18n.xml", u"<language id=\"L%1\">l%1.xml</language>"_s.arg(language));
            m_lines[languageFile(language)] = {u"<language name=\"L\"><font>font_0</font>"_s};
        }
        add("i18n/i18n.xml", u"<spare/>"_s);
        for (int window = 0; window < below(4) + 1; ++window)
            addWindow(window);
        for (int i = 0; i < kSpare; ++i)
            add("widget/widget.xml", u"<spare/>"_s);
        add("widget/widget.xml", u"</interface>"_s);
        for (int language = 0; language < 2; ++language)
            m_lines[languageFile(language)].append(u"<spare/>"_s);
    }

    ThemeFiles files() const
    {
        ThemeFiles files;
        for (auto file = m_lines.cbegin(); file != m_lines.cend(); ++file)
            files[file.key()] = file->join(m_ends).toUtf8();
        files[u"f.ttf"_s] = fontWithGroups({{0x20, 0x7e}});
        return files;
    }

    // Plants a fault on a line of its own, of a block or a spare one, and gives what is to be said:
    // "FILE:LINE RULE".
    QString plant()
    {
        struct Fault
        {
            const char *file, *line, *after, *rule; // what the line holds, and becomes
            bool oncePerFile = false;
        };
        static constexpr Fault faults[] = {
            {"widget/w", "<img>", "<img>img_none</img>", "unknown-image"},
            {"widget/w", "<img>", "<img>IMG_1</img>", "letter-case"},
            {"widget/w", "<img>", "<img>img_0", "unclosed-element"},
            {"widget/w", "<font>", "<font>font_none</font>", "unknown-font"},
            {"widget/w", "<font>", "<font>font_1</font></imgs>", "unclosed-element"},
            {"widget/w", "<forecolor>", "<forecolor>[col_0,none,col_0]</forecolor>", "unknown-colour"},
            {"widget/w", "<forecolor>", "<forecolor>[col_0,gui_trans,col_0]</forecolor>", "key-colour"},
            {"widget/w", "<forecolor>", "<forecolor>[col_0,col_1]</forecolor>", "colour-list"},
            {"widget/w", "<rect>", "<rect>[1,2,3]</rect>", "bad-rect"},
            {"widget/w", "<rect>", "<rect>[1,2,900,4]</rect>", "outside-parent"},
            {"widget/w", "<mode>", "<mode>multiple</mode>", "mode"},
            {"widget/w", "name=\"b_", "<widget class=\"text\" name=\"first\">", "duplicate-block"},
            {"widget/w_", "</interface>",
             "</children></widget><widget "
             "name=\"p\"><rect>[1,1,9,9]</rect><img>large</img></widget></interface>",
             "picture-size"},
            {"widget/w", "<string>", "<string>lacking %</string>", "untranslated", true},
            {"widget/w_", "</interface>",
             "</children></widget><widget name=\"f\"><rect>[1270,0,99,9]</rect></widget></interface>",
             "outside-screen"},
            {"widget/w_", "</interface>", "</children></widget></interface><!-- % -", "unclosed-comment"},
            {"widget/new%.xml", nullptr, "<interface></interface>", "unlisted-document"},
            {"widget/widget.xml", "spare", "<widget class=\"window\" name=\"gone%\"/>", "missing-document"},
            {"images/image.xml", "spare", "<image id=\"more%\">none.png</image>", "missing-image-file"},
            {"images/image.xml", "spare", "<image id=\"more%\">p/0.PNG</image>", "letter-case"},
            {"images/image.xml", "spare", "<image id=\"other%\">p/1.png</image>", "unused-image"},
            {"images/image.xml", "spare", "<image id=\"img_0\">p/2.png</image>", "duplicate-id"},
            {"images/image.xml", "spare", "<image id=\"twin%\">p/0.png</image>", "same-picture"},
            {"images/image.xml", "spare", "<image id=\"bad%\">damaged.png</image>", "unreadable-picture"},
            {"color.xml", "spare", "<color name=\"unused%\">#123456</color>", "unused-colour"},
            {"color.xml", "spare", "<color name=\"twin%\">#000000</color>", "same-colour"},
            {"color.xml", "spare", "<color name=\"col_0\">#999999</color>", "duplicate-id"},
            {"font.xml", "spare", "<font><name>idle%</name><file>f.ttf</file></font>", "unused-font"},
            {"i18n/i18n.xml", "spare", "<language id=\"M%\">none.xml</language>", "theme-config"},
            {"font.xml", "spare", "<font><name>n%</name><file>none.ttf</file></font>", "missing-font-file"},
            {"i18n/l", "spare", "<tran id=\"Nobody%\">x</tran>", "unused-string"},
            {"i18n/l", "spare", "<tran id=\"More%\"> x</tran>", "blank-ends"},
            {"i18n/l", "spare", "<tran id=\"More {%}\">x</tran>", "placeholders"},
            {"i18n/l", "spare", "<tran id=\"More%!\">x</tran>", "end-punctuation"},
            {"i18n/l", "spare", "<tran id=\"More%\\n\">x</tran>", "line-breaks"},
            {"i18n/l", "spare", "<tran id=\"More%\">\u4E2D</tran>", "missing-letters"},
            {"i18n/l", "spare", "<tran id=\"w_0 text 0\"></tran>", "duplicate-source"},
            {"i18n/l", "spare", "<tran id=\"W_0 text 0\">y</tran>", "two-translations"},
            {"i18n/l", "spare", "<tran id=\"More%\">More%</tran>", "same-as-source"},
            {"theme.xml", "spare", "<file_keymap>keys.xml</file_keymap>", "theme-config"},
        };
        const Fault &fault = faults[below(int(std::size(faults)))];
        if (!fault.line) {
            const QString file =
                QString::fromLatin1(fault.file).replace(u'%', QString::number(m_lines.size()));
            m_lines[file] = {QString::fromLatin1(fault.after)};
            return file + u":1 " + QLatin1String(fault.rule);
        }
        QList<QPair<QString, int>> places;
        for (auto file = m_lines.cbegin(); file != m_lines.cend(); ++file) {
            for (int line = kFirstOfBlocks; line < file->size(); ++line) {
                if (file.key().startsWith(QLatin1String(fault.file)) &&
                    !m_taken.contains({file.key(), line}) &&
                    !(fault.oncePerFile && m_once.contains(file.key())) &&
                    file->at(line).contains(QLatin1String(fault.line)))
                    places.append({file.key(), line});
            }
        }
        if (places.isEmpty())
            return {};
        const auto place = places.at(below(int(places.size())));
        m_taken.append(place);
        if (fault.oncePerFile)
            m_once.append(place.first);
        m_lines[place.first][place.second] =
            QString::fromUtf8(fault.after).replace(u'%', QString::number(m_taken.size()));
        return u"%1:%2 %3"_s.arg(place.first).arg(place.second + 1).arg(QLatin1String(fault.rule));
    }

private:
    int below(int most) { return int(m_random.bounded(quint32(most))); }
    void add(const char *file, const QString &line) { m_lines[QLatin1String(file)].append(line); }
    static QString languageFile(int language) { return u"i18n/l%1.xml"_s.arg(language); }
    QString name(const char *kind) { return QLatin1String(kind) + QString::number(below(m_names)); }

    void addWindow(int number)
    {
        const QString windowName = u"w_%1"_s.arg(number);
        add("widget/widget.xml", u"<widget class=\"window\" name=\"" + windowName + u"\"/>");
        QStringList &lines = m_lines[u"widget/"_s + windowName + u".xml"_s];
        lines = {u"<interface><!-- a window -->"_s,
                 u"<widget class=\"window\" name=\"first\"><rect>[ 0,0, 800,600 ]</rect><children>"_s};
        for (int block = 0; block < below(12) + 3; ++block) {
            const QString text = windowName + u" text %1"_s.arg(block);
            const QString indent(below(5), u' ');
            for (const QString &line :
                 {u"<widget class=\"text\" name=\"b_%1\">"_s.arg(block), u"<property>"_s,
                  u"<rect>[%1,%2,100,50]</rect>"_s.arg(below(700)).arg(below(550)),
                  QString(u"<forecolor>[" + name("col_") + u", " + name("col_") + u",#FFFFFF]</forecolor>"),
                  QString(u"<font>" + name("font_") + u"</font>"), QString(u"<string>" + text + u"</string>"),
                  u"<imgs>"_s, u"<mode>single</mode>"_s, QString(u"<img>" + name("img_") + u"</img>"),
                  u"</imgs>"_s, u"</property>"_s, u"</widget>"_s})
                lines.append(indent + line);
            for (int language = 0; language < 2; ++language)
                m_lines[languageFile(language)].append(u"<tran id=\"" + text + u"\">x</tran>");
        }
        lines.append(u"</children></widget></interface>"_s);
    }

    QRandomGenerator m_random;
    QString m_ends = below(2) == 0 ? u"\n"_s : u"\r\n"_s;
    Lines m_lines;
    QList<QPair<QString, int>> m_taken;
    QStringList m_once; // files with a fault that is told once in each
    int m_names = 0;
};

} // namespace

class tst_plantedfaults : public QObject
{
    Q_OBJECT

private slots:
    void everyFaultAtItsLine();
};

void tst_plantedfaults::everyFaultAtItsLine()
{
    int planted = 0;
    QSet<QString> rules;
    for (quint32 seed = 1; seed <= kThemes; ++seed) {
        RandomTheme theme(seed);
        QCOMPARE(problemsOf(theme.files()), QStringList());
        QStringList faults;
        for (int i = 0; i < kFaults; ++i)
            faults.append(theme.plant());
        faults.removeAll(QString());
        planted += int(faults.size());
        const QStringList found = problemsOf(theme.files());
        for (const QString &fault : std::as_const(faults)) {
            const bool isFound = std::any_of(found.begin(), found.end(), [&](const QString &line) {
                return line.startsWith(fault + u' ');
            });
            rules.insert(fault.section(u' ', 1));
            QVERIFY2(isFound,
                     qPrintable(u"theme %1: %2\nfound:\n%3"_s.arg(seed).arg(fault, found.join(u'\n'))));
        }
    }
    QVERIFY(planted > kThemes * kFaults / 2);
    constexpr int ofMeasuredTexts = 2;
    QCOMPARE(rules.size(), kRules - ofMeasuredTexts);
}

QTEST_GUILESS_MAIN(tst_plantedfaults)
#include "tst_plantedfaults.moc"
