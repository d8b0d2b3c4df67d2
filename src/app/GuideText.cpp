#include "app/GuideText.h"

#include "files/Paths.h"
#include "files/RegularFile.h"

#include <QAbstractTextDocumentLayout>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTextBlock>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kWidest = 720;             // pixels of a picture
constexpr qint64 kMostBytes = 8'000'000; // of a file

// What a link to a heading calls it: letters and digits in lower case, "-" for each space.
QString linkNameOf(const QString &heading)
{
    QString name;
    for (const QChar letter : heading.toLower()) {
        if (letter.isLetterOrNumber() || letter == u'-' || letter == u'_')
            name += letter;
        else if (letter == u' ')
            name += u'-';
    }
    return name;
}

} // namespace

GuideText::GuideText(const QString &folder, QWidget *parent) : QTextBrowser(parent), m_folder(folder)
{
    setOpenLinks(false);
    document()->setDocumentMargin(16);
    connect(this, &QTextBrowser::anchorClicked, this, &GuideText::follow);
    read(QStringLiteral("guide.md"));
}

bool GuideText::read(const QString &file)
{
    if (file == m_file)
        return true;
    QString reason;
    const QByteArray bytes = readRegular(joinPath(m_folder, file), kMostBytes, reason);
    if (bytes.isEmpty())
        return false;
    m_file = file;
    setMarkdown(QString::fromUtf8(bytes));
    m_headings.clear();
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if (const int level = block.blockFormat().headingLevel(); level > 0)
            m_headings.append({block.text(), level, block.position()});
    }
    emit headingsChanged();
    return true;
}

// Pictures, no wider than a page; their names lead nowhere outside of the folder.
QVariant GuideText::loadResource(int type, const QUrl &name)
{
    const QString path = name.path();
    if (type != QTextDocument::ImageResource || !name.scheme().isEmpty() || path.contains(u"..") ||
        path.startsWith(u'/'))
        return {};
    QString reason;
    const QImage picture = QImage::fromData(readRegular(joinPath(m_folder, path), kMostBytes, reason));
    const int widest = int(kWidest * devicePixelRatioF());
    QImage shown =
        picture.width() > widest ? picture.scaledToWidth(widest, Qt::SmoothTransformation) : picture;
    shown.setDevicePixelRatio(picture.width() > widest ? devicePixelRatioF() : 1);
    return shown;
}

int GuideText::placeOf(const QStringList &words) const
{
    for (const Heading &heading : m_headings) {
        if (std::all_of(words.begin(), words.end(),
                        [&](const QString &word) { return heading.text.contains(word); }))
            return heading.position;
    }
    return 0;
}

void GuideText::follow(const QUrl &link)
{
    if (!link.scheme().isEmpty() || link.path().contains(u'/'))
        return;
    const Place from = now();
    if (!link.path().isEmpty() && !read(link.path()))
        return;
    m_back.append(from);
    m_forward.clear();
    int position = 0;
    for (const Heading &heading : m_headings) {
        if (linkNameOf(heading.text) == link.fragment())
            position = heading.position;
    }
    showPlace(position);
}

void GuideText::goTo(int position)
{
    m_back.append(now());
    m_forward.clear();
    showPlace(position);
}

void GuideText::showPlace(int position)
{
    QTextCursor there(document());
    there.setPosition(position);
    setTextCursor(there);
    const QRectF place = document()->documentLayout()->blockBoundingRect(there.block());
    verticalScrollBar()->setValue(int(place.top()) - (position > 0 ? int(document()->documentMargin()) : 0));
    emit moved();
}

GuideText::Place GuideText::now() const
{
    return {m_file, verticalScrollBar()->value()};
}

void GuideText::step(QList<Place> &from, QList<Place> &to)
{
    if (from.isEmpty())
        return;
    to.append(now());
    const Place place = from.takeLast();
    read(place.file);
    verticalScrollBar()->setValue(place.scrolled);
    emit moved();
}

void GuideText::keyPressEvent(QKeyEvent *event)
{
    if (event->modifiers() == Qt::AltModifier && event->key() == Qt::Key_Left)
        goBack();
    else if (event->modifiers() == Qt::AltModifier && event->key() == Qt::Key_Right)
        goForward();
    else if (event->key() == Qt::Key_Escape)
        event->ignore(); // for the window
    else
        QTextBrowser::keyPressEvent(event);
}

} // namespace quillmere
