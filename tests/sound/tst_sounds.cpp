// The sound effects: which file each operation plays, the files themselves,
// and a real player that never hangs the program.

#include "../support/sound_log.h"
#include "ui/sound/sounds.h"

#include <QElapsedTimer>
#include <QTest>

using namespace tavrix;

namespace {

const QString sourceFolder = QStringLiteral(TAVRIX_SOURCE_RESOURCES);

} // namespace

class TestSounds : public QObject {
    Q_OBJECT

private slots:
    // Turned off, nothing plays.
    void soundOffPlaysNothing()
    {
        SoundLog log;
        Sounds sounds(log, QStringLiteral("/somewhere"));
        sounds.playHarp(false);
        sounds.setEnabled(false);
        sounds.playDefaultSound(true);
        QCOMPARE(log.played, QStringList{QStringLiteral("harp1.wav")});
    }

    // The program finds its sounds beside it, never through a path of the
    // machine it was built on: the test programs have their own copy. Each
    // is a short wave whose length the player reads (0 would play nothing).
    void everySoundLiesBesideTheProgram_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"splat.wav", "boing2.wav", "harp1.wav", "fanfare.wav", "applause60.wav",
                                 "applause100.wav", "applause140.wav", "applausewin.wav", "awwww.wav"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }
    void everySoundLiesBesideTheProgram()
    {
        QFETCH(QString, name);
        QCOMPARE(Sounds::defaultFolder(), QCoreApplication::applicationDirPath() + QStringLiteral("/resources"));
        const int ms = waveDurationMs(Sounds::defaultFolder() + QLatin1Char('/') + name);
        QVERIFY2(ms >= 50 && ms <= 5000, qPrintable(QString::number(ms)));
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
