#pragma once

#include <QString>

namespace quillmere {

// What comes with the program. A package puts it into share/quillmere, beside the folder of the program; else
// it stands beside the program, or, where the program was built, in the checkout that it was built from.

// Where the package put it; empty where the program comes from no package.
QString packageFolder();

// The folder of the example: `theme` and its README.md are in it. Empty where there is none. It may be
// read-only, so what is to be edited is a copy.
QString exampleFolder();

// The folder of the user guide: `guide.md` and `pictures` are in it. Empty where there is none.
QString guideFolder();

} // namespace quillmere
