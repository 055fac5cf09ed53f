#pragma once

// Where the program finds the files that travel with it (sounds, help
// pages): beside the program in the build folder, or under share/tavrix when
// installed, always relative to the program itself so that a copy works
// wherever it was built or installed.

#include <QString>

namespace tavrix {

enum class ProgramFiles { Sounds, Help };

// The folder holding the program's files of one kind, or "" when neither
// place has it.
QString programFilesFolder(ProgramFiles kind);
// The same, looked up from the folder a program lies in.
QString programFilesFolder(ProgramFiles kind, const QString &programFolder);

} // namespace tavrix
