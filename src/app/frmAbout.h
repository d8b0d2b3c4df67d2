#pragma once

#include <QDialog>

namespace quillmere {

// The About box: name, version and the maker's address.
class frmAbout : public QDialog
{
    Q_OBJECT

public:
    explicit frmAbout(QWidget *parent = nullptr);
};

} // namespace quillmere
