#include "commands/PictureNames.h"

#include <algorithm>

namespace quillmere {

namespace {

constexpr qsizetype kMostBytes = 240; // of the 255 that a file system takes, with room for number and suffix

bool obeyed(QChar letter)
{
    if (letter >= u' ' && letter <= u'~')
        return false;
    switch (letter.category()) {
    case QChar::Other_Control:
    case QChar::Other_Format: // turns the direction of what follows
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

} // namespace

QString PictureNames::next(const QString &window)
{
    QString name = window;
    for (QChar &letter : name) {
        if (letter == u'/' || letter == u'\\' || obeyed(letter))
            letter = u'_';
    }
    while (name.toUtf8().size() > kMostBytes)
        name.chop(name.size() > kMostBytes ? name.size() - kMostBytes : 1);
    QString file = name;
    for (int number = 2; m_given.contains(file.toCaseFolded()); ++number)
        file = QStringLiteral("%1-%2").arg(name).arg(number);
    m_given.insert(file.toCaseFolded());
    return file + QStringLiteral(".png");
}

QString printable(QString text)
{
    if (std::none_of(text.cbegin(), text.cend(), obeyed))
        return text;
    for (QChar &letter : text) {
        if (obeyed(letter))
            letter = u'?';
    }
    return text;
}

} // namespace quillmere
