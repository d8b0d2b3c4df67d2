#pragma once

#include "markup/ColourCode.h"
#include "naming/Translations.h"

#include <QObject>
#include <QThreadPool>

namespace quillmere {

class LiveIndex;
class ThemeProject;

// What the names of the open theme stand for, as its lists have it, saved or not.
class NameFacts : public QObject
{
    Q_OBJECT

public:
    NameFacts(const ThemeProject &theme, const LiveIndex &live, QObject *parent = nullptr);
    ~NameFacts() override;

    QString themeFolder() const;
    // The full path of a picture; empty for an image that is not defined.
    QString pathOf(const QString &image) const;
    // Of a name of the catalogue, or of a code; empty where that says no colour.
    QString codeOf(const QString &colour) const;

    struct Font
    {
        QString file, size, style; // as the catalogue has them; pixels
        QString path;              // the full path of the file
    };
    std::optional<Font> font(const QString &name) const;

    // Whether the catalogue has the window.
    bool isListed(const QString &window) const;

    // What is known of the translations. They are read beside the window's thread, again when something may
    // have changed since; translationsArrived() tells.
    const Translations &translations();

signals:
    void translationsArrived();

private:
    void readTranslations();

    const ThemeProject &m_theme;
    const LiveIndex &m_live;
    Translations m_translations;
    bool m_isOld = true, m_reading = false;
    QThreadPool m_worker;
};

} // namespace quillmere
