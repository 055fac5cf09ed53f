// The sound effects: which file each operation plays, the files themselves,
// and a real player that never hangs the program.

#include "../support/sound_log.h"
#include "sound/sounds.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTest>

using namespace tavrix;

namespace {

const QStringList soundFiles{"splat.wav",       "boing2.wav",      "harp1.wav",
                             "fanfare.wav",     "applause60.wav",  "applause100.wav",
                             "applause140.wav", "applausewin.wav", "awwww.wav"};

const QString sourceFolder = QStringLiteral(TAVRIX_SOURCE_RESOURCES);

quint16 le16(const QByteArray &b, int at)
{
    return static_cast<quint8>(b[at]) | static_cast<quint8>(b[at + 1]) << 8;
}

} // namespace

class TestSounds : public QObject {
    Q_OBJECT

private slots:
    // Turned off, or without a sound folder, nothing plays.
    void soundOffPlaysNothing()
    {
        SoundLog log;
        Sounds sounds(log, QStringLiteral("/somewhere"));
        sounds.playHarp(false);
        sounds.setEnabled(false);
        sounds.playDefaultSound(true);
        QCOMPARE(log.played, QStringList{QStringLiteral("harp1.wav")});

        Sounds withoutFolder(log, QString());
        withoutFolder.playFanfare(true);
        QCOMPARE(log.played, QStringList{QStringLiteral("harp1.wav")});
    }

    // The program finds its sounds beside it, never through a path of the
    // machine it was built on: the test programs have their own copy.
    void theDefaultFolderLiesBesideTheProgram()
    {
        QCOMPARE(Sounds::defaultFolder(), QCoreApplication::applicationDirPath() + QStringLiteral("/resources"));
        for (const QString &name : soundFiles)
            QVERIFY2(QFileInfo(Sounds::defaultFolder() + QLatin1Char('/') + name).isFile(), qPrintable(name));
    }

    // Every effect is a short mono 16-bit PCM wave file.
    void theFilesAreShortMonoWaves()
    {
        for (const QString &name : soundFiles) {
            QFile file(sourceFolder + QLatin1Char('/') + name);
            QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(name));
            const QByteArray header = file.read(44);
            const int ms = waveDurationMs(file.fileName());
            // PCM, mono, 16 bits a sample, 50 ms to 5 s.
            QVERIFY2(header.startsWith("RIFF") && header.mid(8, 8) == "WAVEfmt " && le16(header, 20) == 1
                         && le16(header, 22) == 1 && le16(header, 34) == 16 && ms >= 50 && ms <= 5000,
                     qPrintable(name + QString::number(ms)));
        }
    }

    // Missing files return at once; a real file returns whether or not this
    // machine has an audio device, and a new sound replaces the old.
    void theRealPlayerNeverHangs()
    {
        QtSoundPlayer player;
        QElapsedTimer clock;
        clock.start();
        for (bool wait : {true, false})
            player.playSound(QStringLiteral("/no/such/file.wav"), wait);
        QVERIFY(clock.elapsed() < 1000);

        player.playSound(sourceFolder + QStringLiteral("/applausewin.wav"), false);
        clock.restart();
        player.playSound(sourceFolder + QStringLiteral("/splat.wav"), true);
        QVERIFY(clock.elapsed() < 3000);
    }
};

QTEST_MAIN(TestSounds)
#include "tst_sounds.moc"
