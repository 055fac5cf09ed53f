#pragma once

// Where the program finds the files that travel with it (sounds, help
// pages): beside the program in the build folder, or under share/tavrix when
// installed, always relative to the program itself so that a copy works
// wherever it was built or installed.

#include <QString>
#include <QStringList>

namespace tavrix {

enum class ProgramFiles { Sounds, Help };

// The folder holding the program's files of one kind, or "" when neither
// place has it.
QString programFilesFolder(ProgramFiles kind);
// The same, looked up from the folder a program lies in.
QString programFilesFolder(ProgramFiles kind, const QString &programFolder);
// The places looked in, in order, for a program in `programFolder`: what a
// message names when the files are not found.
QStringList programFilesPlaces(ProgramFiles kind, const QString &programFolder);

} // namespace tavrix
