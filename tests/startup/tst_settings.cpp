#include "core/startup/settings.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrix;

class TestSettings : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        dir_ = std::make_unique<QTemporaryDir>();
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, dir_->path());
    }

    // A first start has no settings; the defaults are written to the file
    // the manual names. (Choices kept over a restart: tst_main_window.)
    void defaultsAreWrittenAndChoicesReadStrictly()
    {
        QVERIFY(!settingsStored() && getSetting(QStringLiteral("Units")).isEmpty());
        createDefaultSettings();
        QVERIFY(settingsStored() && getSetting(QStringLiteral("Units")) == QStringLiteral("in"));
        QVERIFY(QFile::exists(dir_->filePath(QStringLiteral("Halvern/Tavrix!.ini"))));

        // A stored choice counts only when it is exactly one of the texts
        // written; anything else is ignored. Only the exact text "cm" selects
        // centimetres.
        QVERIFY(unitsAreCentimetres(QStringLiteral("cm")));
        for (const char *garbled : {"CM", "Cm", "in", "", " cm"})
            QVERIFY2(!unitsAreCentimetres(QString::fromLatin1(garbled)), garbled);
        QVERIFY(optionFromSetting(QStringLiteral("1"), 3) == 1 && optionFromSetting(QStringLiteral("3"), 3) == 3);
        for (const char *garbled : {"", "0", "4", "-1", " 2", "2 ", "02", "+2", "2.0", "x", "\u0662"})
            QVERIFY2(!optionFromSetting(QString::fromUtf8(garbled), 3), garbled);
        QVERIFY(switchFromSetting(QStringLiteral("on")) == true && switchFromSetting(QStringLiteral("off")) == false);
        for (const char *garbled : {"", "On", "1", "true", "on "})
            QVERIFY2(!switchFromSetting(QString::fromLatin1(garbled)), garbled);
    }

private:
    std::unique_ptr<QTemporaryDir> dir_;
};

QTEST_GUILESS_MAIN(TestSettings)
#include "tst_settings.moc"
