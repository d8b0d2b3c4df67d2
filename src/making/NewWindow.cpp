#include "making/NewWindow.h"

#include "files/FailedStep.h"
#include "files/FileList.h"
#include "files/Paths.h"
#include "markup/Matching.h"
#include "naming/Rename.h"
#include "outline/Outline.h"
#include "theme/CatalogueLines.h"
#include "theme/ThemeProject.h"

#include <QObject>

namespace quillmere {

namespace {

const QString kEnding = QStringLiteral(".xml");

} // namespace

WindowNames::WindowNames(const ThemeProject &theme) : m_encoding(theme.widgets.document.encoding())
{
    for (const ListRows::Row &window : theme.widgets.LvWidget.rows())
        m_taken.insert(foldedText(window.sub(1)));
    for (const QString &file : unsortedFilesOf(findFolder(theme.widgets.folder))) {
        if (file.endsWith(kEnding, Qt::CaseInsensitive))
            m_taken.insert(foldedText(QStringView(file).chopped(kEnding.size())));
    }
}

QString WindowNames::whyNot(const QString &name) const
{
    if (const QString why = whyNotName(NameKind::Window, name); !why.isEmpty())
        return why;
    if (m_taken.contains(foldedText(name)))
        return QObject::tr("Another window, or a file beside the catalogue, has this name already.");
    return whyNotIn(m_encoding, name);
}

QString WindowNames::free(const QString &stem) const
{
    QString name = stem;
    for (int number = 2; m_taken.contains(foldedText(name)); ++number)
        name = QStringLiteral("%1_%2").arg(stem).arg(number);
    return name;
}

ThemeEdit newWindow(const ThemeProject &theme, const ThemeSources &sources, const QString &name,
                    const QString &text, CodePage page)
{
    const QString catalogue = theme.widgets.document.path();
    const std::optional<QString> entries = textOf(sources, {catalogue, findFile(catalogue)});
    if (!entries)
        throwFailed("read", catalogue, QStringLiteral("there is no such file, or it cannot be read"));
    const auto entry =
        linesBefore(u"</interface>", u"<widget ", *entries,
                    {QStringLiteral("<widget class=\"window\" style=\"default\" name=\"%1\"/>").arg(name)});
    if (!entry)
        throwFailed("change", catalogue, QStringLiteral("it has no \"</interface>\" to put a window before"));
    ThemeEdit edit;
    edit.create(joinPath(findFolder(theme.widgets.folder), QString(name + kEnding)),
                encodeText(text, page, sources.rule));
    edit.replace(catalogue, *entries, entry->range, entry->after);
    return edit;
}

QString withWindowName(const QString &text, const QString &oldName, const QString &newName)
{
    const Outline outline(text);
    const auto name =
        outline.blocks().empty() ? std::nullopt : outline.nameAttribute(outline.blocks().front());
    if (!name || outline.at(name->value) != oldName)
        return text;
    return QString(text).replace(name->value.start, name->value.size(), newName);
}

} // namespace quillmere
