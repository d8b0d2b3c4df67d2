#pragma once

#include "checks/Ignored.h"
#include "checks/ThemeCheck.h"

#include <QObject>
#include <QThreadPool>
#include <QTimer>

#include <array>
#include <memory>

namespace quillmere {

class LiveIndex;

// The problems of the open theme, kept up to date beside the window's own thread. The window in the source
// box is checked when typing pauses, the whole theme a little later, and what was under way then is given up:
// what another window or a catalogue lacks is not what one waits for while one types.
class LiveCheck : public QObject
{
    Q_OBJECT

public:
    LiveCheck(LiveIndex &index, PictureReader reader, QObject *parent = nullptr);
    ~LiveCheck() override; // tells what is under way to stop, and waits for it

    // Without those that are ignored, by file and place. Stays the same object until changed().
    std::shared_ptr<const QList<Problem>> problems() const { return m_shown; }
    const std::array<int, 3> &counts() const { return m_counts; } // of them, by severity
    // Whether the theme has been checked since it was opened.
    bool isReady() const { return m_facts != nullptr; }
    // Whether the text in the source box is another one than was checked.
    bool isBehind() const;
    // Those of the text in the source box; none while it is another text than was checked.
    QList<Problem> openProblems() const;
    // The same at a position in SourceBox::text(), for whoever tells about what stands there.
    QList<Problem> problemsAt(qsizetype position) const;

    // For this theme; remembered in the person's settings.
    const QList<IgnoredRule> &ignored() const { return m_ignored; }
    void setIgnored(const QList<IgnoredRule> &ignored);

    // From now on texts are held to their room as far as these measures go; what is not in them, as it is
    // another text, font or size since, is not told of. They are forgotten with the theme. `font` is asked
    // for the fonts as they are when a check of the whole theme begins.
    void setMeasures(std::shared_ptr<const TextMeasures> measures,
                     std::function<std::function<ReceiverTheme::Font(const QString &)>()> fonts);
    // Whether problems() are those of the newest measures.
    bool isMeasured() const;

    // Pictures or other files that nobody tells about may have changed.
    void lookAgain();

signals:
    void changed();

private:
    struct Found
    {
        std::shared_ptr<const ThemeFacts> facts;
        std::shared_ptr<const QList<Problem>> all, shown;
        QList<Problem> open;
        std::array<int, 3> counts = {};
        bool isStopped = false;
    };
    struct Work;
    enum class Extent { Theme, Window, Nothing }; // what is to be checked anew

    static QList<Problem> checkedAgain(const QList<Problem> &all, const IndexedFile &file, const Work &work,
                                       const std::stop_token &stop);
    static Found find(Work &work, const std::stop_token &stop);
    void indexChanged();
    void start(Extent extent);
    void finish(const std::shared_ptr<Found> &found, qint64 revision, const QString &openFile);
    QString settingsKey() const;

    LiveIndex &m_index;
    std::shared_ptr<PictureStore> m_pictures;
    std::shared_ptr<const TextMeasures> m_measures;
    std::function<std::function<ReceiverTheme::Font(const QString &)>()> m_fonts;
    QTimer m_later; // until the whole theme is checked
    QString m_folder;
    QList<IgnoredRule> m_ignored;
    std::shared_ptr<const ThemeFacts> m_facts;
    std::shared_ptr<const QList<Problem>> m_all, m_shown;
    QList<Problem> m_open;
    qint64 m_openRevision = -1;
    QString m_openFile; // whose text m_all has in the place of the file's
    std::array<int, 3> m_counts = {};
    std::stop_source m_stop;
    QThreadPool m_worker; // last: nothing of the above may go while it works
};

} // namespace quillmere
