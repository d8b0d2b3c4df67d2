#include "commands/forms/CompareCommand.h"

#include "browser/forms/PageCamera.h"
#include "commands/PictureNames.h"
#include "commands/PutFile.h"
#include "commands/forms/CommandTheme.h"
#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "gallery/SheetText.h"
#include "gallery/forms/DrawnDifference.h"
#include "gallery/forms/Png.h"
#include "gallery/forms/ThemePages.h"

#include <QDir>
#include <QEventLoop>
#include <QTextStream>

namespace quillmere {

namespace {

// One of the two themes.
class Side
{
public:
    Side(const CommandTheme &theme, const QString &given)
        : folder(given), size(screenPixels(theme.project())),
          pages(ThemePages::receiver(theme.project(), ThemePages::HiddenWindows::Shown)),
          m_camera(given, size, PageCamera::Mark::Below)
    {
        for (const ThemeWindow &window : windowsOf(theme.project())) {
            if (!m_documents.contains(window.name))
                names.append(window.name);
            m_documents.insert(window.name, m_documents.value(window.name, window.document));
        }
        m_camera.setFonts(pages.fonts());
    }

    ThemeWindow window(const QString &name) const { return {name, m_documents.value(name)}; }
    bool has(const QString &name) const { return m_documents.contains(name); }
    bool hasDocument(const QString &name) const { return !findFile(m_documents.value(name)).isEmpty(); }
    // Draws the window, and calls back with its picture, null where it cannot be drawn. RunTimeError where
    // there is nothing to draw.
    void draw(const QString &name, const std::function<void(const QImage &)> &use)
    {
        m_camera.take(pages.pageOf(window(name)), use);
    }

    const QString folder;
    const QSize size;
    const ThemePages pages;
    QStringList names;

private:
    QHash<QString, QString> m_documents;
    PageCamera m_camera;
};

class Comparison
{
public:
    Comparison(const CommandLine &line, const CommandTheme &before, const CommandTheme &after)
        : m_folder(line.out), m_before(before, line.theme), m_after(after, line.other)
    {
    }

    // RunTimeError where a file cannot be written.
    int run(QTextStream &out);

private:
    // Nothing where the window is the same in both.
    std::optional<DifferingWindow> compare(const QString &name);
    bool areSurelySame(const QString &name) const;
    QString put(const QImage &picture, const QString &base, QStringView what) const;
    void draw(const QString &name, DifferingWindow &window, QImage *before, QImage *after);

    QString m_folder;
    Side m_before, m_after;
    PictureNames m_files;
};

int Comparison::run(QTextStream &out)
{
    QStringList names = m_before.names;
    for (const QString &name : m_after.names) {
        if (!m_before.has(name))
            names.append(name);
    }
    QList<DifferingWindow> differing;
    for (const QString &name : names) {
        const std::optional<DifferingWindow> window = compare(name);
        if (!window)
            continue;
        differing.append(*window);
        out << printable(name) << ": "
            << (window->reason.isEmpty() ? QString::number(window->pixels) + u" pixels differ"
                                         : printable(window->reason))
            << Qt::endl;
    }
    const QString report = joinPath(m_folder, u"index.html");
    const QString reason =
        putFile(comparisonReport(m_before.folder, m_after.folder, differing, names.size()), report);
    if (!reason.isEmpty())
        throw RunTimeError(u"cannot write " + report + u": " + reason);
    out << differing.size() << " of " << names.size() << " windows differ -> " << printable(report)
        << Qt::endl;
    return differing.isEmpty() ? 0 : 1;
}

bool Comparison::areSurelySame(const QString &name) const
{
    if (m_before.size != m_after.size)
        return false;
    try {
        const QString key = m_before.pages.keyOf(m_before.window(name));
        return !key.isEmpty() && key == m_after.pages.keyOf(m_after.window(name));
    } catch (const RunTimeError &) {
        return false; // it is told when it is drawn
    }
}

std::optional<DifferingWindow> Comparison::compare(const QString &name)
{
    const bool isInBoth = m_before.has(name) && m_after.has(name);
    const bool wasThere = m_before.hasDocument(name), isThere = m_after.hasDocument(name);
    if (isInBoth && ((!wasThere && !isThere) || (wasThere && isThere && areSurelySame(name))))
        return {};
    DifferingWindow window;
    window.name = name;
    if (!isInBoth)
        window.reason = u"only in " + (m_before.has(name) ? m_before : m_after).folder;
    else if (wasThere != isThere)
        window.reason = u"no document in " + (wasThere ? m_after : m_before).folder;
    QImage before, after;
    draw(name, window, wasThere ? &before : nullptr, isThere ? &after : nullptr);
    DrawnDifference difference;
    if (!before.isNull() && !after.isNull()) {
        difference = differenceOf(before, after);
        window.pixels = difference.pixels;
        if (difference.pixels == 0 && window.reason.isEmpty())
            return {};
    }
    QString base = m_files.next(name);
    base.chop(4); // ".png"
    window.before = put(before, base, u"before");
    window.after = put(after, base, u"after");
    window.difference = put(difference.picture, base, u"difference");
    return window;
}

// Both at the same time, as far as they are asked for. Null where there is none, and the reason is told.
void Comparison::draw(const QString &name, DifferingWindow &window, QImage *before, QImage *after)
{
    QEventLoop loop;
    int waiting = 0;
    const auto ask = [&](Side &side, QImage *picture) {
        if (!picture)
            return;
        try {
            side.draw(name, [&, picture](const QImage &taken) {
                *picture = taken;
                if (taken.isNull() && window.reason.isEmpty())
                    window.reason = u"not drawn for " + side.folder;
                if (--waiting == 0)
                    loop.quit();
            });
            ++waiting;
        } catch (const RunTimeError &error) {
            window.reason = error.message();
        }
    };
    ask(m_before, before);
    ask(m_after, after);
    if (waiting > 0)
        loop.exec();
}

// Gives the name of the file; empty where there is no picture.
QString Comparison::put(const QImage &picture, const QString &base, QStringView what) const
{
    if (picture.isNull())
        return {};
    const QString file = base + u'.' + what + u".png";
    const QString reason = putFile(pngOf(picture), joinPath(m_folder, file));
    if (!reason.isEmpty())
        throw RunTimeError(u"cannot write the picture " + joinPath(m_folder, file) + u": " + reason);
    return file;
}

} // namespace

int compareThemes(const CommandLine &line, QTextStream &out, QTextStream &err)
{
    const CommandTheme before(line.theme, err);
    const CommandTheme after(line.other, err);
    if (!before.isOpen() || !after.isOpen())
        return 2;
    if (!QDir().mkpath(line.out)) {
        err << "quillmere: cannot make the folder " << line.out << Qt::endl;
        return 2;
    }
    try {
        return Comparison(line, before, after).run(out);
    } catch (const RunTimeError &error) {
        err << "quillmere: " << printable(error.message()) << Qt::endl;
        return 2;
    }
}

} // namespace quillmere
