#include "core/session/program_files.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace tavrix {

namespace {

// In the build folder the sounds lie in "resources" beside the program;
// installed, the program is in bin/ and its files in share/tavrix/.
QStringList relativePlaces(ProgramFiles kind)
{
    if (kind == ProgramFiles::Sounds)
        return {QStringLiteral("resources"), QStringLiteral("../share/tavrix/sounds")};
    return {QStringLiteral("help"), QStringLiteral("../share/tavrix/help")};
}

} // namespace

QString programFilesFolder(ProgramFiles kind)
{
    return programFilesFolder(kind, QCoreApplication::applicationDirPath());
}

QString programFilesFolder(ProgramFiles kind, const QString &programFolder)
{
    const QDir program(programFolder);
    for (const QString &relative : relativePlaces(kind)) {
        const QFileInfo folder(program.filePath(relative));
        if (folder.isDir())
            return QDir::cleanPath(folder.absoluteFilePath());
    }
    return {};
}

QStringList programFilesPlaces(ProgramFiles kind, const QString &programFolder)
{
    const QDir program(programFolder);
    QStringList places;
    for (const QString &relative : relativePlaces(kind))
        places.append(QDir::cleanPath(QFileInfo(program.filePath(relative)).absoluteFilePath()));
    return places;
}

} // namespace tavrix
