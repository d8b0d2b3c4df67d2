#include "keeping/UnsavedTexts.h"

#include "files/FailedStep.h"
#include "files/Paths.h"
#include "files/WholeFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace quillmere {

namespace {

QString endingOf(UnsavedKind kind)
{
    switch (kind) {
    case UnsavedKind::Colours:
        return QStringLiteral(".colours");
    case UnsavedKind::Images:
        return QStringLiteral(".images");
    case UnsavedKind::Translations:
        return QStringLiteral(".translations");
    case UnsavedKind::Text:
        break;
    }
    return QStringLiteral(".txt");
}

// A letter for each value, in the order of the two enumerations.
constexpr QStringView kPages = u"auw", kRules = u"aw";

QString asLetters(const Encoding &encoding)
{
    return QString(u'-') + kPages[int(encoding.page)] + kRules[int(encoding.rule)];
}

std::optional<Encoding> encodingOf(QStringView letters)
{
    if (letters.size() != 2)
        return {};
    const qsizetype page = kPages.indexOf(letters[0]), rule = kRules.indexOf(letters[1]);
    if (page < 0 || rule < 0)
        return {};
    return Encoding{CodePage(page), CodePageRule(rule)};
}

// What the names of all files of a document begin with.
QString prefixOf(const QString &document)
{
    const QString path =
        document.isEmpty() ? document : QDir::cleanPath(QFileInfo(document).absoluteFilePath());
    return QString::fromLatin1(QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1).toHex());
}

// The text and what it was made from.
std::optional<UnsavedText> fromBytes(const QByteArray &bytes)
{
    QString text(bytes.size() / 2, Qt::Uninitialized);
    std::copy_n(bytes.constData(), text.size() * 2, reinterpret_cast<char *>(text.data()));
    const qsizetype end = text.indexOf(u'\n');
    if (!text.startsWith(QChar(QChar::ByteOrderMark)) || end < 0)
        return {};
    const QStringView line = QStringView(text).first(end).mid(1);
    const qsizetype blank = line.indexOf(u' ');
    const QStringView base = blank < 0 ? line : line.first(blank);
    const QStringView document = blank < 0 ? QStringView() : line.sliced(blank + 1);
    const QList<QStringView> parts = base.split(u'-');
    return UnsavedText{{},
                       {},
                       document.toString(),
                       text.mid(end + 1),
                       QByteArray::fromHex(parts.first().toLatin1()),
                       encodingOf(parts.value(1))};
}

QString lockOf(const QString &file)
{
    return file + QStringLiteral(".lock");
}

std::unique_ptr<QLockFile> newLock(const QString &file)
{
    auto lock = std::make_unique<QLockFile>(lockOf(file));
    lock->setStaleLockTime(0); // a text may be worked on for days
    return lock;
}

// Where no lock can be made, writing the file will say why not.
bool isLockedByAnother(QLockFile &lock)
{
    return !lock.tryLock(0) && lock.error() == QLockFile::LockFailedError;
}

bool isInUse(const QString &file)
{
    return QFileInfo::exists(lockOf(file)) && UnsavedFile::take(file).isNull();
}

} // namespace

std::optional<UnsavedText> readUnsaved(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    auto text = fromBytes(file.readAll());
    if (text) {
        text->file = path;
        text->time = QFileInfo(path).lastModified();
    }
    return text;
}

QList<UnsavedText> unsavedTextsOf(const QString &folder, const QString &document, InUse inUse,
                                  UnsavedKind kind)
{
    const QFileInfoList files = QDir(folder).entryInfoList(
        {QString(prefixOf(document) + u"-*" + endingOf(kind))}, QDir::Files | QDir::NoSymLinks);
    QList<UnsavedText> kept;
    for (const QFileInfo &info : files) {
        if (inUse == InUse::LeaveOut && isInUse(info.filePath()))
            continue;
        if (const auto text = readUnsaved(info.filePath()))
            kept.append(*text);
    }
    std::sort(kept.begin(), kept.end(),
              [](const UnsavedText &a, const UnsavedText &b) { return a.time > b.time; });
    return kept;
}

UnsavedFile UnsavedFile::forNew(const QString &folder, const QString &document, UnsavedKind kind)
{
    makeFolder(folder);
    const QString start = joinPath(folder, QString(prefixOf(document) + u'-'));
    for (QDateTime time = QDateTime::currentDateTime();; time = time.addMSecs(1)) {
        const QString path = start + time.toString(u"yyyyMMdd-hhmmss-zzz") + endingOf(kind);
        UnsavedFile file = QFileInfo::exists(path) ? UnsavedFile() : take(path);
        if (!file.isNull() && !QFileInfo::exists(path))
            return file;
    }
}

UnsavedFile UnsavedFile::take(const QString &path)
{
    UnsavedFile file;
    file.m_lock = newLock(path);
    if (!isLockedByAnother(*file.m_lock))
        file.m_path = path;
    return file;
}

void UnsavedFile::remove()
{
    if (!isNull())
        QFile::remove(m_path);
    *this = UnsavedFile();
}

void dropUnsaved(const QString &folder, const QDateTime &time,
                 const std::function<QString(const QString &document)> &shown)
{
    const QFileInfoList files = QDir(folder).entryInfoList({QString(u'*' + endingOf(UnsavedKind::Text))},
                                                           QDir::Files | QDir::NoSymLinks);
    for (const QFileInfo &info : files) {
        if (info.lastModified() >= time)
            continue;
        const auto kept = readUnsaved(info.filePath());
        // Not locked before it is sure to go: who opens the document just now is to be offered it.
        if (kept && info.fileName().startsWith(prefixOf(kept->document)) &&
            shown(kept->document) == kept->text)
            UnsavedFile::take(kept->file).remove();
    }
}

void keepUnsaved(const QString &file, const QString &document, const QString &text, const QByteArray &base,
                 std::optional<Encoding> encoding)
{
    // The path is there for a person who looks into the folder; a line break in it would begin the text.
    const QString all = QChar(QChar::ByteOrderMark) + QString::fromLatin1(base.toHex()) +
                        (encoding ? asLetters(*encoding) : QString()) + u' ' +
                        QString(document).replace(u'\n', u' ') + u'\n' + text;
    const auto bytes =
        QByteArray::fromRawData(reinterpret_cast<const char *>(all.constData()), all.size() * 2);
    QString reason = makeFolder(QFileInfo(file).path());
    if (reason.isEmpty())
        reason = WholeFile(file).writeAll(bytes);
    if (!reason.isEmpty())
        throwFailed("keep the unsaved text in", file, reason);
}

} // namespace quillmere
