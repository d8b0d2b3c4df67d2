#include "files/Paths.h"
#include "Fuzz.h"
#include "files/FileList.h"
#include "files/TestFiles.h"

// A path is its folder and its name; joining leaves one separator; what is found is there, has the name that
// was asked for but for letter case, and is found again as it stands.
void fuzz(const Input &input)
{
    static const TestFiles files({"Sub/A.xml", "Sub/sub/b.xml", "B.xml", ".dot"});
    const QString path = withOwnSeparators(input.text(0));
    same(withOwnSeparators(path), path, "own separators stay");
    same(folderOf(path).toString() + fileNameOf(path), path, "folder and name");
    check(!fileNameOf(path).contains(separator()), "a name", path);
    const QString joined = joinPath(files.folder(), path);
    check(joined.startsWith(QString(files.folder() + separator())) &&
              joined.mid(files.folder().size() + 1).left(1) != QString(separator()),
          "one separator", joined);

    const QString file = findFile(joined);
    check(file.isEmpty() || QFileInfo(file).isFile(), "a file that is there", file);
    same(findFile(file), file, "found as it stands");
    check(file.isEmpty() || fileNameOf(file).compare(fileNameOf(joined), Qt::CaseInsensitive) == 0,
          "its name", file);
    const QString folder = findFolder(joined);
    check(folder.isEmpty() || QFileInfo(folder).isDir(), "a folder that is there", folder);
    FileNames names;
    const QString name = fileNameOf(joined).toString();
    check(names.contains(folderOf(joined).toString(), name) ==
              filesOf(folderOf(joined).toString()).contains(name),
          "names of a folder", joined);
    liesBelow(joined, files.folder());
}
