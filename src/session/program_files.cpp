#include "session/program_files.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace tavrix {

QString programFilesFolder(ProgramFiles kind)
{
    return programFilesFolder(kind, QCoreApplication::applicationDirPath());
}

QString programFilesFolder(ProgramFiles kind, const QString &programFolder)
{
    // In the build folder the sounds lie in "resources" beside the program;
    // installed, the program is in bin/ and its files in share/tavrix/.
    const QString beside = kind == ProgramFiles::Sounds ? QStringLiteral("resources") : QStringLiteral("help");
    const QString installed = kind == ProgramFiles::Sounds ? QStringLiteral("../share/tavrix/sounds")
                                                           : QStringLiteral("../share/tavrix/help");
    const QDir program(programFolder);
    for (const QString &relative : {beside, installed}) {
        const QFileInfo folder(program.filePath(relative));
        if (folder.isDir())
            return QDir::cleanPath(folder.absoluteFilePath());
    }
    return {};
}

} // namespace tavrix
