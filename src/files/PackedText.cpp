#include "files/PackedText.h"

#include <QByteArrayList>
#include <QThreadPool>

#include <algorithm>
#include <mutex>
#include <utility>

namespace quillmere {

namespace {
constexpr qsizetype kLarge = 1 << 21; // units; of smaller ones, one a key may come here
constexpr qsizetype kPiece = 1 << 17; // units; packing the whole at once would need it twice
constexpr int kQuickest = 1;          // of the levels that qCompress has

// Nothing where there is too little memory for it.
QByteArrayList packedPieces(QStringView text)
{
    QByteArrayList pieces;
    while (!text.isEmpty()) {
        qsizetype length = std::min(kPiece, text.size());
        if (length < text.size() && text[length].isLowSurrogate())
            ++length;
        pieces.append(qCompress(text.first(length).toUtf8(), kQuickest));
        if (pieces.last().isEmpty())
            return {};
        pieces.last().squeeze(); // it has room for a text that does not become smaller
        text = text.sliced(length);
    }
    return pieces;
}
} // namespace

struct PackedText::Kept
{
    std::mutex mutex;
    QString text;          // guarded by it, until it is packed
    QByteArrayList packed; // guarded by it
};

PackedText::PackedText(const QString &text, Packing packing) : m_size(text.size())
{
    if (text.isEmpty())
        return;
    m_kept = std::make_shared<Kept>();
    m_kept->text = text;
    if (text.size() < kLarge)
        return;
    if (packing == Packing::Now)
        pack(text, m_kept);
    else
        QThreadPool::globalInstance()->start(
            [text = QString(text), left = std::weak_ptr(m_kept)]() mutable { pack(std::move(text), left); });
}

void PackedText::pack(QString text, const std::weak_ptr<Kept> &left)
{
    // What is no UTF-16 would come back as another text.
    if (left.expired() || !text.isValidUtf16())
        return;
    QByteArrayList packed = packedPieces(std::exchange(text, {}));
    if (const std::shared_ptr<Kept> kept = left.lock(); kept && !packed.isEmpty()) {
        const std::lock_guard lock(kept->mutex);
        kept->packed = std::move(packed);
        kept->text.clear();
    }
}

QString PackedText::text() const
{
    if (!m_kept)
        return {};
    const std::lock_guard lock(m_kept->mutex);
    if (m_kept->packed.isEmpty())
        return m_kept->text;
    QString text;
    text.reserve(m_size);
    for (const QByteArray &piece : m_kept->packed)
        text += QString::fromUtf8(qUncompress(piece));
    return text;
}

} // namespace quillmere
