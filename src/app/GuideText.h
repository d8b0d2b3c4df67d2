#pragma once

#include <QTextBrowser>

namespace quillmere {

// Shows a text of the guide, with its pictures. Everything in it is read from one folder; nothing else is
// opened, whatever a link says.
class GuideText : public QTextBrowser
{
    Q_OBJECT

public:
    explicit GuideText(const QString &folder, QWidget *parent = nullptr);

    struct Heading
    {
        QString text;
        int level = 1;
        int position = 0; // in the document
    };
    const QList<Heading> &headings() const { return m_headings; }
    // Shows a place at the top; goTo() also remembers where one was.
    void showPlace(int position);
    void goTo(int position);
    // Of the first heading that contains all of these, else of the text's begin.
    int placeOf(const QStringList &words) const;
    bool canGoBack() const { return !m_back.isEmpty(); }
    bool canGoForward() const { return !m_forward.isEmpty(); }
    void goBack() { step(m_back, m_forward); }
    void goForward() { step(m_forward, m_back); }

signals:
    // Another file is shown.
    void headingsChanged();
    void moved();

protected:
    QVariant loadResource(int type, const QUrl &name) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    struct Place
    {
        QString file;
        int scrolled = 0; // pixels
    };

    bool read(const QString &file);
    void follow(const QUrl &link);
    void step(QList<Place> &from, QList<Place> &to);
    Place now() const;

    QString m_folder, m_file;
    QList<Heading> m_headings;
    QList<Place> m_back, m_forward;
};

} // namespace quillmere
