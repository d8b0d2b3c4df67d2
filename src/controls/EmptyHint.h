#pragma once

class QAbstractItemView;
class QString;

namespace quillmere {

// Says in a list without rows what it would show, and how to fill it.
void setEmptyHint(QAbstractItemView &list, const QString &hint);

// Says so where a filter hides all rows of a list. To be called with an empty text when it does not.
void setFilterHint(QAbstractItemView &list, const QString &hint);

} // namespace quillmere
