#pragma once

#include <QObject>

namespace quillmere {

class LiveCheck;
class SourceBox;

// Marks the problems of the open window in its source. While one types the marks move with the text, and they
// are others when that has been checked.
class ProblemMarks : public QObject
{
public:
    ProblemMarks(LiveCheck &check, SourceBox &source, QObject *parent = nullptr);
};

} // namespace quillmere
