#pragma once

#include "outline/Range.h"

#include <QList>
#include <QObject>
#include <QString>

#include <functional>

namespace quillmere {

class ListView;
class OpenDocument;
class SourceBox;
class TabStrip;
class Talk;
class TabFrame;
class ThemeProject;

// Leads to places of the theme, over windows and tabs, and back to where one was.
class Going : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        TabStrip &strip;
        QList<TabFrame *> tabs; // in the order of the strip
        SourceBox &source;
        OpenDocument &document;
        const ThemeProject &theme;
        // Opens a window of a theme in the source box, asking about the one before, and a language in its
        // list.
        std::function<void(const QString &path, const QString &theme)> openDocument;
        std::function<void(const QString &path)> openLanguage;
    };
    Going(Parts parts, Talk &talk, QObject *parent = nullptr);

    // Shows a place: the row of a catalogue in its tab, or, where `row` is -1, the range selected in the
    // source. The range is one of the text that the file holds, or of the source box where it is open there.
    // What goes wrong is shown to the person.
    void goTo(const QString &file, Range range, qint32 row);
    void back();
    void forward();

private:
    struct Place
    {
        int tab = 0;
        QString file, theme; // in the source box
        qsizetype start = 0, length = 0;
        int row = -1; // in the list of the tab
    };
    struct Catalogue;

    bool goToRow(const QString &file, qint32 row);
    void goToText(const QString &file, Range range);
    ListView *listOf(int tab) const;
    Place placeNow() const;
    static bool isSamePlace(const Place &a, const Place &b);
    void leave();
    void tabChanged();
    void step(QList<Place> &from, QList<Place> &to);
    bool show(const Place &place);
    void showSource(qsizetype start, qsizetype length);
    void showRow(ListView *list, int row);

    Parts m_parts;
    Talk &m_talk;
    QList<Place> m_back, m_forward; // the last one is the nearest
    int m_tab;                      // the one that is shown
    bool m_isGoing = false;         // what changes on the way is no place of its own
};

} // namespace quillmere
