#pragma once

#include <QString>

namespace quillmere {

// The folder of the example theme that the person works on, in their documents; empty where the program comes
// without an example.
QString placeOfExample();

// Makes that folder where it is not there yet, which `isNew` tells, and gives it. What is in it already stays
// as it is. RunTimeError where it cannot be made.
QString copyOfExample(bool &isNew);

} // namespace quillmere
