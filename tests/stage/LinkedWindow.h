#pragma once

#include "app/WindowFixture.h"

#include "controls/ListView.h"

namespace quillmere {

// A window on a text with nested blocks, two of one name among them, and what is selected in it.
class LinkedWindow : public Window
{
public:
    LinkedWindow() : source(Window::source()), list(find<ListView>("lvBlock"))
    {
        turnTo(8);
        source->setText(text);
        QCoreApplication::processEvents();
    }

    // The rows that are selected in the list, as text.
    QString rows() const
    {
        QStringList rows;
        for (int row = 0; row < list->model()->rowCount(); ++row) {
            if (list->selectionModel()->isRowSelected(row))
                rows.append(QString::number(row));
        }
        return rows.join(u',');
    }
    void click(int row, Qt::KeyboardModifiers keys = {}) const
    {
        const QModelIndex index = list->model()->index(row, 1);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, keys, list->visualRect(index).center());
    }
    // Where the text holds this for the n-th time, from 0.
    qsizetype nth(const QString &what, int n) const
    {
        qsizetype at = -1;
        for (int i = 0; i <= n; ++i)
            at = source->text().indexOf(what, at + 1);
        return at;
    }

    static inline const QString text =
        u"<interface>\r\n"
        "  <widget class=\"window\" name=\"main\">\r\n"
        "    <property><rect>[0,0,400,300]</rect></property>\r\n"
        "    <children>\r\n"
        "      <widget class=\"text\" "
        "name=\"same\"><property><rect>[1,2,30,40]</rect></property></widget>\r\n"
        "      <!-- <widget class=\"text\" name=\"off\"></widget> -->\r\n"
        "      <widget class=\"text\" "
        "name=\"same\"><property><rect>[5,6,70,80]</rect></property></widget>\r\n"
        "    </children>\r\n"
        "  </widget>\r\n"
        "</interface>\r\n"_s;
    SourceBox *source;
    ListView *list;
};

} // namespace quillmere
