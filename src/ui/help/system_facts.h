#pragma once

// What a bug report needs to know about this copy of the program and the
// machine it runs on, gathered apart from any window so that it can be
// checked on its own.

#include <QString>

namespace tavrix {

struct SystemFacts {
    QString version;
    QString qtRuntime;
    QString qtBuild;
    QString operatingSystem;
    QString kernel;
    QString cpuArchitecture;
    QString databasePath;
    qint64 databaseBytes = -1; // -1: no such file
    // SQLite's write-ahead log beside the file, where recent darts wait
    // until they are copied into it; -1 when there is none.
    qint64 databaseLogBytes = -1;
    QString settingsPath;
    bool settingsWritten = false;
    QString audioOutput;

    // True when not one fact is known.
    bool isEmpty() const;
};

// The facts of this machine, with the statistics database and the settings
// file at the given paths.
SystemFacts gatherSystemFacts(const QString &databasePath, const QString &settingsPath);

// The facts as plain text, one per line; a fact not known reads "unknown".
QString systemInfoText(const SystemFacts &facts);

} // namespace tavrix
