#pragma once

#include <QObject>
#include <QSize>

#include <memory>

class QToolButton;
class QWidget;

namespace quillmere {

class Commands;
class LiveCheck;
class LiveIndex;
class Talk;
class ThemeNames;
class ThemeProject;
struct NoLongerFitting;
struct TextMeasures;
struct ThemeConversion;

// "Convert Theme..." in the File menu: scales all windows to another screen, as one edit that Undo in the
// Tool menu takes back. Nothing is written before the person has read what will no longer fit.
class ThemeConverting : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        const ThemeProject &theme;
        const LiveIndex &index;
        LiveCheck &check;
        ThemeNames &names;
        QToolButton &changes; // shows what the last edit has changed
        Talk &talk;
    };
    ThemeConverting(const Parts &parts, Commands &menu, QWidget &window);

private:
    void mnuConvertTheme_Click();
    bool convert(const QSize &from, const QSize &to);
    // The theme as it is when the command begins: the event loop runs meanwhile.
    struct Now;
    std::shared_ptr<const TextMeasures> measured(const Now &now) const;
    NoLongerFitting checked(const ThemeConversion &conversion, const Now &now,
                            const std::shared_ptr<const TextMeasures> &measures) const;

    Parts m_parts;
    QWidget &m_window;
};

} // namespace quillmere
