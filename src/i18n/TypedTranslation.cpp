#include "i18n/TypedTranslation.h"

#include <QCoreApplication>

namespace quillmere {

QString reasonAgainst(QStringView typed)
{
    if (typed.contains(u'<') || typed.contains(u'>'))
        return QCoreApplication::translate("quillmere::TypedTranslation",
                                           "A language file cannot hold a translation with < or >.");
    return {};
}

QString inRow(const QString &typed, const ListRows::Row &string)
{
    const QString has = string.sub(1) + string.sub(2);
    if (has.contains(u'\n') && !has.contains(u"\r\n"))
        return typed;
    return QString(typed).replace(u'\n', QLatin1String("\r\n"));
}

} // namespace quillmere
