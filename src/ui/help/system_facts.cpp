#include "ui/help/system_facts.h"

#include "ui/dialogs/messages.h"
#include "core/session/version.h"

#include <QAudioDevice>
#include <QFileInfo>
#include <QList>
#include <QMediaDevices>
#include <QSysInfo>
#include <QtGlobal>

namespace tavrix {

namespace {

QString orUnknown(const QString &fact)
{
    return fact.isEmpty() ? QStringLiteral("unknown") : fact;
}

QString defaultAudioOutput()
{
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    if (device.isNull())
        return QStringLiteral("none");
    const QString description = device.description();
    return description.isEmpty() ? QString::fromUtf8(device.id()) : description;
}

} // namespace

bool SystemFacts::isEmpty() const
{
    for (const QString *fact : {&version, &qtRuntime, &qtBuild, &operatingSystem, &kernel,
                                &cpuArchitecture, &databasePath, &settingsPath, &audioOutput}) {
        if (!fact->isEmpty())
            return false;
    }
    return databaseBytes < 0;
}

SystemFacts gatherSystemFacts(const QString &databasePath, const QString &settingsPath)
{
    SystemFacts facts;
    facts.version = versionNumber();
    facts.qtRuntime = QString::fromLatin1(qVersion());
    facts.qtBuild = QStringLiteral(QT_VERSION_STR);
    facts.operatingSystem = QSysInfo::prettyProductName();
    facts.kernel = (QSysInfo::kernelType() + QLatin1Char(' ') + QSysInfo::kernelVersion()).trimmed();
    facts.cpuArchitecture = QSysInfo::currentCpuArchitecture();
    if (!databasePath.isEmpty()) {
        const QFileInfo database(databasePath);
        facts.databasePath = database.absoluteFilePath();
        if (database.isFile())
            facts.databaseBytes = database.size();
        const QFileInfo log(databasePath + QStringLiteral("-wal"));
        if (log.isFile())
            facts.databaseLogBytes = log.size();
    }
    facts.settingsPath = settingsPath;
    facts.settingsWritten = !settingsPath.isEmpty() && QFileInfo(settingsPath).isFile();
    facts.audioOutput = defaultAudioOutput();
    return facts;
}

QString systemInfoText(const SystemFacts &facts)
{
    const QString qt = orUnknown(facts.qtRuntime) + QStringLiteral(" (built with ")
                       + orUnknown(facts.qtBuild) + QLatin1Char(')');
    const QString databaseSize = facts.databaseBytes < 0
                                     ? QStringLiteral("no such file")
                                     : QString::number(facts.databaseBytes) + QStringLiteral(" bytes");
    QString settings = orUnknown(facts.settingsPath);
    if (!facts.settingsPath.isEmpty() && !facts.settingsWritten)
        settings += QStringLiteral(" (not written yet)");

    QList<std::pair<const char *, QString>> lines = {
        {"Version", orUnknown(facts.version)},
        {"Qt", qt},
        {"Operating system", orUnknown(facts.operatingSystem)},
        {"Kernel", orUnknown(facts.kernel)},
        {"CPU architecture", orUnknown(facts.cpuArchitecture)},
        {"Database", orUnknown(facts.databasePath)},
        {"Database size", databaseSize},
    };
    if (facts.databaseLogBytes >= 0)
        lines.append({"Database log", QString::number(facts.databaseLogBytes) + QStringLiteral(" bytes")});
    lines.append({"Settings", settings});
    lines.append({"Audio output", orUnknown(facts.audioOutput)});
    QString text = QString::fromLatin1(applicationTitle) + QLatin1Char('\n');
    for (const auto &[name, value] : lines)
        text += QString::fromLatin1(name) + QStringLiteral(": ") + value + QLatin1Char('\n');
    return text;
}

} // namespace tavrix
