#pragma once

#include "files/Backups.h"
#include "rows/ListRows.h"

#include <QDialog>

#include <functional>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace quillmere {

class Files;
class ListView;
class Talk;

// The versions kept of the files of a theme, what each would change, and the command that puts one back.
class frmRestore : public QDialog
{
    Q_OBJECT

public:
    // `theme` is the folder of the open theme, empty where none is open; `leadsTo` are the files that it
    // names. Of these, the ones outside of it are listed, too. Cancelled comes through where the person does
    // not wait for the list.
    frmRestore(const QString &theme, const QStringList &leadsTo, Files &files, Talk &talk, QWidget *parent);

signals:
    // A file was written anew from one of its versions; its path is below the theme's folder as that was
    // given.
    void restored(const QString &path);

protected:
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *makeList();
    void makeDifference();
    QLayout *makeButtons();
    void loadVersions();
    void showVersions();
    void sortBy(int column);
    const Version *selected() const;
    void showDifference();
    void cmdRestore_Click();

    QString m_theme;
    QStringList m_outside; // the files outside of the theme that it leads to
    Files &m_files;
    Talk &m_talk;
    QList<Version> m_versions;  // newest first
    QList<ListRows::Row> m_all; // how each is shown
    QList<qsizetype> m_shown;   // by row, its place in m_versions
    int m_sortColumn = 1;
    Qt::SortOrder m_order = Qt::DescendingOrder;
    ListRows m_rows; // text = file below the theme, sub-item 1 = time, 2 = bytes
    QLineEdit *txtFilter;
    ListView *lvVersions;
    QWidget *m_difference;
    QLabel *lblEmpty, *lblDifference;
    QCheckBox *chkIndentation;
    QPlainTextEdit *txtDifference;
    QPushButton *cmdRestore, *cmdClose;
};

} // namespace quillmere
