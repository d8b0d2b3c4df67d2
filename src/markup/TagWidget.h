#pragma once

#include <QString>
#include <QStringView>

namespace quillmere {

// The opening tag of the first widget whose text holds name="NAME" exactly, self-closed: "<widget ", the text
// up to the first "/>", "/>". Empty when there is none; the middle is empty where the widget has no "/>".
QString GetTagWidget(QStringView document, QStringView name);

} // namespace quillmere
