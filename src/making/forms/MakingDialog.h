#pragma once

#include <QDialog>

#include <functional>

class QFormLayout;
class QLabel;
class QPushButton;

namespace quillmere {

// A dialog that asks for what something new is to be like, and says at each key why it cannot be like that.
class MakingDialog : public QDialog
{
    Q_OBJECT

protected:
    // `make` stands on the button.
    MakingDialog(const char *name, const QString &title, const QString &make, QWidget *parent);

    // Below the fields before it; `caption` has the key that leads to it.
    void addField(const QString &caption, QWidget *field);
    void addField(const QString &caption, QWidget *field, QWidget *beside);
    // To be called once when all fields are there, with the one to begin in.
    void complete(QWidget *first);
    // To be called whenever a field has changed.
    void check();

    // A sentence; empty where it can be made.
    virtual QString whyNot() const = 0;
    // False where it was not made, and the person knows why.
    virtual bool make() = 0;

private:
    QFormLayout *m_fields;
    QLabel *lblNewWhy;
    QPushButton *cmdNew;
};

} // namespace quillmere
