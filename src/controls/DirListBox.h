#pragma once

#include <QTreeWidget>

namespace quillmere {

// A folder list box: the folders from the root down to the current one, and the folders in it. A double click
// or Enter goes to a folder, Backspace to the one above.
class DirListBox : public QTreeWidget
{
    Q_OBJECT
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY pathChanged)

public:
    DirListBox(const QString &name, const QString &accessibleName, QWidget *parent = nullptr);

    const QString &path() const { return m_path; }
    // Absolute, own separators, none at the end. A folder that does not exist changes nothing and returns
    // false.
    bool setPath(const QString &folder);

signals:
    // Sent for the same folder too: choosing a theme once more loads it again.
    void pathChanged(const QString &path);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void fill();

    QString m_path;
};

} // namespace quillmere
