#pragma once

#include "files/TextFile.h"
#include "outline/Values.h"
#include "receiver/ReceiverPage.h"

#include <optional>

namespace quillmere {

// The document of a window, and the text that counts for it where that is not the one in the file.
struct WindowSource
{
    QString path; // as the window catalogue leads to it
    std::optional<QString> text;
    CodePageRule rule = CodePageRule::Automatic;
};

// What a picture of a window is drawn from.
struct WindowPage
{
    QString page;             // empty where there is nothing to draw
    QString reason;           // why, where there is a document all the same
    QByteArray mark;          // another one wherever the picture may be another one
    QStringList files;        // that it was made from and names; full paths, those that exist
    std::optional<Box> place; // of the window on the screen
    bool hasDocument = true;
    bool isHidden = false; // until the receiver shows it
};

// Larger documents are not drawn with others: each would keep the browser for seconds. Bytes.
constexpr qint64 kLargestInGallery = 4'000'000;

// A window that is hidden until the receiver shows it would be a black picture among the others: it is drawn
// as hidden blocks are that are to be seen.
ReceiverOptions withWindowShown(const Outline &outline, const ReceiverOptions &options);

// As withWindowShown(). Reads the files; to be called beside the window's thread. Never throws.
WindowPage windowPage(const WindowSource &source, const ReceiverTheme &theme, const QString &themeFolder,
                      const ReceiverOptions &options = {});

} // namespace quillmere
