#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QFrame;
class QListWidget;
class QWidget;

namespace quillmere {

class OpenDocument;
class Talk;
class ThemeProject;

// Ctrl+Tab and Ctrl+Shift+Tab go through the windows that were open last: a list shows them while Ctrl is
// held, and the one that is selected when it is released is opened.
class WindowRound : public QObject
{
    Q_OBJECT

public:
    using Open = std::function<void(const QString &path, const QString &theme)>;
    WindowRound(const OpenDocument &document, const ThemeProject &theme, Open open, Talk &talk,
                QWidget &window);

protected:
    // Of the whole program, while the list is shown: the keyboard stays where it is.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Place
    {
        QString path, theme;
        bool operator==(const Place &) const = default;
    };

    void remember();
    void step(int by);
    void show();
    void fill();
    void end(bool goes);

    const OpenDocument &m_document;
    const ThemeProject &m_theme;
    Open m_open;
    Talk &m_talk;
    QWidget &m_window;
    QList<Place> m_places; // the last one first; the first is the one that is open
    QFrame *m_frame = nullptr;
    QListWidget *m_list = nullptr;
};

} // namespace quillmere
