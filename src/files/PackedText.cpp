#include "files/PackedText.h"

#include <QThreadPool>

#include <mutex>
#include <utility>

namespace quillmere {

namespace {
constexpr qsizetype kLarge = 1 << 21; // units; of smaller ones, one a key may come here
constexpr int kQuickest = 1;          // of the levels that qCompress has
} // namespace

struct PackedText::Kept
{
    std::mutex mutex;
    QString text;      // guarded by it, until it is packed
    QByteArray packed; // guarded by it
};

PackedText::PackedText(const QString &text) : m_size(text.size())
{
    if (text.isEmpty())
        return;
    m_kept = std::make_shared<Kept>();
    m_kept->text = text;
    // What is no UTF-16 would come back as another text.
    if (text.size() < kLarge || !text.isValidUtf16())
        return;
    QThreadPool::globalInstance()->start([text = QString(text), left = std::weak_ptr(m_kept)]() mutable {
        if (left.expired())
            return;
        QByteArray packed = qCompress(std::exchange(text, {}).toUtf8(), kQuickest);
        if (const std::shared_ptr<Kept> kept = left.lock(); kept && !packed.isEmpty()) {
            const std::lock_guard lock(kept->mutex);
            kept->packed = std::move(packed);
            kept->text.clear();
        }
    });
}

QString PackedText::text() const
{
    if (!m_kept)
        return {};
    const std::lock_guard lock(m_kept->mutex);
    return m_kept->packed.isEmpty() ? m_kept->text : QString::fromUtf8(qUncompress(m_kept->packed));
}

} // namespace quillmere
