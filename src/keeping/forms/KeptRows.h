#pragma once

#include <QObject>
#include <QStringList>

#include <memory>
#include <vector>

namespace quillmere {

class Files;
class OfferBar;
class Talk;
class ThemeProject;
class TranslationPanel;

// Keeps the colours, the images and the translations from getting lost while they are not saved, and offers
// them when their file is opened again.
class KeptRows : public QObject
{
    Q_OBJECT

public:
    // The theme may go first.
    KeptRows(ThemeProject &theme, Files &files, OfferBar &offers, Talk &talk, QObject *parent = nullptr);
    ~KeptRows() override;

    // Keeps the translation that is typed in the panel with the others.
    void watch(TranslationPanel &panel);
    // Keeps all that is unsaved now. Gives a line for each list that cannot be kept, and why.
    QStringList keepAll();
    // A sentence on each list that has been kept since it was last asked, and whose place another file has
    // taken; empty where there is none.
    QString takeNews();

private:
    class List;
    std::vector<std::unique_ptr<List>> m_lists;
};

} // namespace quillmere
