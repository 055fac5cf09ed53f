// The remembered club database: every field comes back as stored, garbled
// values read as the defaults, a club database is in use only when switched
// on and complete, and no password ever reaches the settings file.

#include "core/startup/club_settings.h"
#include "core/startup/settings.h"

#include "../support/data_table.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrix;

Q_DECLARE_METATYPE(tavrix::TlsMode)

class TestClubSettings : public QObject {
    Q_OBJECT

    static QByteArray settingsFile()
    {
        QFile file(settingsFilePath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private slots:
    void init()
    {
        dir_ = std::make_unique<QTemporaryDir>();
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, dir_->path());
    }

    // Names with quotes, spaces and letters beyond ASCII come back as typed;
    // the password given with the address is dropped; switching back to the
    // local file keeps the fields; a club is in use only with a user.
    void fieldsComeBackWithoutThePassword()
    {
        QCOMPARE(readClubSettings(), ClubSettings{});
        ClubSettings club;
        club.server.host = QStringLiteral("darts.club.example");
        club.server.port = 6543;
        club.server.database = QStringLiteral("Dart's \"Club\" Zürich");
        club.server.user = QStringLiteral("Ann O'Neil");
        club.server.tls = TlsMode::VerifyFull;
        club.server.password = QStringLiteral("Pw-9c2e7f");
        club.inUse = true;
        saveClubSettings(club);

        ClubSettings expected = club;
        expected.server.password.reset();
        QCOMPARE(readClubSettings(), expected);
        QCOMPARE(clubServerInUse(), std::optional<ServerAddress>(expected.server));
        QVERIFY(settingsFile().contains("ClubUser") && !settingsFile().contains("Pw-9c2e7f"));

        saveClubInUse(false);
        QVERIFY(!clubServerInUse());
        expected.inUse = false;
        QCOMPARE(readClubSettings(), expected);

        // Without a user there is nobody to log in as; without a host the
        // server on this computer is meant.
        saveClubSettings({ServerAddress{}, true});
        QVERIFY(!clubServerInUse());
        saveSetting(QStringLiteral("ClubUser"), QStringLiteral("board"));
        QVERIFY(clubServerInUse() && clubServerInUse()->host.isEmpty());
    }

    // A value the program never writes reads as the default, never as a
    // near miss: the port 5432, the mode "prefer", the local file.
    void garbledValuesReadAsDefaults_data()
    {
        addTable<QString, QString, QString, int, TlsMode, bool>(
            {"port", "tls", "inUse", "readPort", "readTls", "readInUse"},
            {{"all fine", "5433", "require", "1", 5433, TlsMode::Require, true},
             {"bounds", "65535", "disable", "0", 65535, TlsMode::Disable, false},
             {"port 0, capitals", "0", "REQUIRE", "yes", 5432, TlsMode::Prefer, false},
             {"port too high", "65536", "tls", "true", 5432, TlsMode::Prefer, false},
             {"blanks", " 5433", " require", " 1", 5432, TlsMode::Prefer, false},
             {"leading zeros", "05433", "verify_full", "01", 5432, TlsMode::Prefer, false}});
    }
    void garbledValuesReadAsDefaults()
    {
        QFETCH(QString, port);
        QFETCH(QString, tls);
        QFETCH(QString, inUse);
        saveSetting(QStringLiteral("ClubUser"), QStringLiteral("board"));
        saveSetting(QStringLiteral("ClubPort"), port);
        saveSetting(QStringLiteral("ClubTls"), tls);
        saveSetting(QStringLiteral("ClubInUse"), inUse);
        const ClubSettings club = readClubSettings();
        QTEST(club.server.port, "readPort");
        QTEST(club.server.tls, "readTls");
        QTEST(club.inUse, "readInUse");
    }

private:
    std::unique_ptr<QTemporaryDir> dir_;
};

QTEST_GUILESS_MAIN(TestClubSettings)
#include "tst_club_settings.moc"
