#pragma once

#include "catalogues/FontSample.h"

#include <QScrollArea>
#include <QTimer>

#include <memory>

class QLabel;

namespace quillmere {

class PageCamera;

// Shows some lines in a font of the theme. Fonts come from strangers, so they are read and drawn in the
// browser's cell, as those of the receiver view are; it is there only as long as fonts are looked at.
class FontView : public QScrollArea
{
    Q_OBJECT

public:
    FontView();
    ~FontView() override;

    // The folder of the theme, and that in which it has its fonts.
    void setTheme(const QString &folder, const QString &fontFolder);
    // Lines to show beside English.
    void setLetters(const QStringList &lines);
    void showFont(const SampledFont &font);
    void clear();

    // What is read instead of a sample; empty where there is one.
    QString reason() const;

signals:
    // A font is looked at.
    void wantsLetters();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void draw();
    void take(const QImage &picture, const QString &family);
    void say(const QString &text);
    PageCamera &camera();

    QLabel *lblFontSample;
    QString m_folder, m_fontFolder;
    QStringList m_letters;
    SampledFont m_font;
    bool m_hasFont = false;
    int m_asked = 0; // counts samples; only the last is of use
    QTimer m_soon, m_rest;
    std::unique_ptr<PageCamera> m_camera;
};

} // namespace quillmere
