// Writes a large theme, the same bytes every time:
//
//   make_theme FOLDER [--windows N] [--images N] [--colours N] [--strings N] [--blocks N]
//
// FOLDER/theme is what the editor opens; its window wnd_large has as many blocks as asked for, which makes
// 2 MB of 10,000.

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTextStream>
#include <QtEndian>

namespace {

constexpr int kPicturesPerFolder = 200;
constexpr int kPictureSize = 8; // pixels, both ways
constexpr int kFonts = 12;
constexpr int kBlocksOfWindow = 20; // of every window but the large one

QString number(int value, int digits)
{
    return QStringLiteral("%1").arg(value, digits, 10, QLatin1Char('0'));
}

class ThemeWriter
{
public:
    ThemeWriter(const QString &folder, int images, int colours)
        : m_folder(folder + QStringLiteral("/theme/")), m_images(images), m_colours(colours)
    {
    }

    void writeTheme() const
    {
        write(QStringLiteral("theme.xml"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<theme>\r\n<name>Large</name>\r\n<config>\r\n"
              "<file_widget>widget/widget.xml</file_widget>\r\n<file_image>images/image.xml</file_image>\r\n"
              "<file_color>color/color.xml</file_color>\r\n<file_i18n>i18n/i18n.xml</file_i18n>\r\n"
              "<file_font>font/font.xml</file_font>\r\n<file_keymap>keymap.xml</file_keymap>\r\n"
              "</config>\r\n</theme>\r\n");
        write(QStringLiteral("keymap.xml"),
              "<keymap>\r\n<index><item display=\"Digits\" group=\"digits\"/></index>\r\n"
              "<group name=\"digits\"><key name=\"1\">0x01</key></group>\r\n</keymap>\r\n");
        QByteArray fonts = "<fonts>\r\n";
        for (int i = 0; i < kFonts; ++i)
            fonts += "<font><name>" + font(i).toLatin1() + "</name><file>sans.ttf</file><size>" +
                     QByteArray::number(14 + i) + "</size><style>normal</style></font>\r\n";
        write(QStringLiteral("font/font.xml"), fonts + "</fonts>\r\n");
    }

    void writeImages() const
    {
        QByteArray catalogue = "<images>\r\n";
        for (int i = 0; i < m_images; ++i) {
            const QString path = number(i / kPicturesPerFolder, 4) + u'/' + image(i) + QStringLiteral(".bmp");
            catalogue += "<image id=\"" + image(i).toLatin1() + "\">" + path.toLatin1() + "</image>\r\n";
            write(QStringLiteral("images/") + path, picture(i));
        }
        write(QStringLiteral("images/image.xml"), catalogue + "</images>\r\n");
    }

    void writeColours() const
    {
        QByteArray catalogue = "<colors>\r\n";
        for (int i = 0; i < m_colours; ++i)
            catalogue += "<color name=\"" + colour(i).toLatin1() + "\">#" +
                         QByteArray::number(0x100000 + i * 4099, 16).right(6).toUpper() + "</color>\r\n";
        write(QStringLiteral("color/color.xml"), catalogue + "</colors>\r\n");
    }

    void writeStrings(int strings) const
    {
        write(QStringLiteral("i18n/i18n.xml"),
              "<languages>\r\n<language id=\"English\">english.xml</language>\r\n"
              "<language id=\"Other\">other.xml</language>\r\n</languages>\r\n");
        for (const char *name : {"english", "other"}) {
            QByteArray text = QByteArray("<language name=\"") + name + "\">\r\n<font>font_00</font>\r\n";
            for (int i = 0; i < strings; ++i) {
                const QByteArray source = "Message number " + QByteArray::number(i) + " of the receiver";
                text +=
                    "<tran id=\"" + source + "\">" + (*name == 'e' ? source : QByteArray()) + "</tran>\r\n";
            }
            write(QStringLiteral("i18n/") + QLatin1String(name) + QStringLiteral(".xml"),
                  text + "</language>\r\n");
        }
    }

    void writeWindows(int windows, int largeBlocks)
    {
        QByteArray catalogue =
            "<interface>\r\n<width>1280</width>\r\n<height>720</height>\r\n<bpp>32</bpp>\r\n";
        for (int i = 0; i < windows; ++i) {
            const QString name =
                i == 0 ? QStringLiteral("wnd_large") : QString(QStringLiteral("wnd_") + number(i, 4));
            catalogue += "<widget class=\"window\" style=\"default\" name=\"" + name.toLatin1() + "\"/>\r\n";
            write(QStringLiteral("widget/") + name + QStringLiteral(".xml"),
                  window(name, i == 0 ? largeBlocks : kBlocksOfWindow).toLatin1());
        }
        write(QStringLiteral("widget/widget.xml"), catalogue + "</interface>\r\n");
    }

private:
    static QString image(int i) { return QStringLiteral("img_") + number(i, 5); }
    static QString colour(int i) { return QStringLiteral("colour_") + number(i, 4); }
    static QString font(int i)
    {
        return i == 0 ? QStringLiteral("font_prog") : QString(QStringLiteral("font_") + number(i, 2));
    }

    // A bitmap of one colour.
    static QByteArray picture(int i)
    {
        constexpr qsizetype head = 54;
        constexpr qsizetype pixels = kPictureSize * kPictureSize * 3;
        QByteArray file(head + pixels, '\0');
        const auto put = [&file](qsizetype at, quint32 value) { qToLittleEndian(value, file.data() + at); };
        file[0] = 'B';
        file[1] = 'M';
        put(2, quint32(file.size()));
        put(10, head);
        put(14, 40); // of the second header
        put(18, kPictureSize);
        put(22, kPictureSize);
        put(26, 1 | 24 << 16); // planes, bits a pixel
        put(34, pixels);
        for (qsizetype at = head; at < file.size(); ++at)
            file[at] = char(i >> (at - head) % 3 * 5);
        return file;
    }

    // About 200 bytes a block.
    QString window(const QString &name, int blocks)
    {
        // A marker need not stand in every kind.
        static const QString kinds[] = {
            QStringLiteral("<widget class=\"button\" style=\"default\" name=\"NAME\">\r\n<property>\r\n"
                           "<rect>[X,Y,240,42]</rect>\r\n<imgs>\r\n<mode>single</mode>\r\n<img>IMAGE</img>"
                           "\r\n</imgs>\r\n</property>\r\n</widget>\r\n"),
            QStringLiteral("<widget class=\"text\" style=\"default\" name=\"NAME\">\r\n<property>\r\n"
                           "<string>Message NAME</string>\r\n<rect>[X,Y,320,30]</rect>\r\n"
                           "<forecolor>[COLOUR,COLOUR,COLOUR]</forecolor>\r\n<font>FONT</font>\r\n"
                           "</property>\r\n</widget>\r\n"),
            QStringLiteral("<widget class=\"image\" style=\"default\" name=\"NAME\">\r\n<property>\r\n"
                           "<rect>[X,Y,32,32]</rect>\r\n<backcolor>[COLOUR,COLOUR,COLOUR]</backcolor>\r\n"
                           "<img>IMAGE</img>\r\n</property>\r\n</widget>\r\n")};
        const auto any = [this](int many) { return int(m_random.bounded(quint32(qMax(many, 1)))); };
        QString text =
            QStringLiteral("<interface>\r\n<widget class=\"window\" style=\"default\" name=\"%1\">\r\n"
                           "<property>\r\n<rect>[0,0,1280,720]</rect>\r\n</property>\r\n<children>\r\n")
                .arg(name);
        for (int i = 1; i < blocks; ++i) {
            const std::pair<QString, QString> values[] = {
                {QStringLiteral("NAME"), QStringLiteral("block_") + number(i, 5)},
                {QStringLiteral("X,"), QString::number(any(1280)) + u','},
                {QStringLiteral("Y,"), QString::number(any(720)) + u','},
                {QStringLiteral("IMAGE"), image(any(m_images))},
                {QStringLiteral("COLOUR"), colour(any(m_colours))},
                {QStringLiteral("FONT"), font(any(kFonts))}};
            QString block = kinds[i % 3];
            for (const auto &[marker, value] : values)
                block.replace(marker, value);
            text += block;
        }
        return text + QStringLiteral("</children>\r\n</widget>\r\n</interface>\r\n");
    }

    void write(const QString &name, const QByteArray &bytes) const
    {
        const QString path = m_folder + name;
        QDir().mkpath(path.section(QLatin1Char('/'), 0, -2));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(path));
    }

    QString m_folder;
    int m_images, m_colours;
    QRandomGenerator m_random{20000};
};

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("FOLDER"), QStringLiteral("where theme/ is made"));
    const std::pair<const char *, const char *> counts[] = {{"windows", "2000"},
                                                            {"images", "20000"},
                                                            {"colours", "2000"},
                                                            {"strings", "20000"},
                                                            {"blocks", "10000"}};
    for (const auto &[name, count] : counts)
        parser.addOption(
            {QLatin1String(name), QStringLiteral("how many"), QStringLiteral("N"), QLatin1String(count)});
    parser.process(app);
    const QString folder = parser.positionalArguments().value(0);
    if (folder.isEmpty())
        parser.showHelp(2);
    const auto count = [&parser](const char *name) { return parser.value(QLatin1String(name)).toInt(); };

    ThemeWriter writer(folder, count("images"), count("colours"));
    writer.writeTheme();
    writer.writeImages();
    writer.writeColours();
    writer.writeStrings(count("strings"));
    writer.writeWindows(count("windows"), count("blocks"));
    return 0;
}
