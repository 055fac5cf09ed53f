#include "core/startup/settings.h"

#include "../support/data_table.h"

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
    void defaultsAreWritten()
    {
        QVERIFY(!settingsStored() && getSetting(QStringLiteral("Units")).isEmpty());
        createDefaultSettings();
        QVERIFY(settingsStored() && getSetting(QStringLiteral("Units")) == QStringLiteral("in"));
        QVERIFY(QFile::exists(dir_->filePath(QStringLiteral("Halvern/Tavrix!.ini"))));
    }

    // A stored choice counts only when it is exactly one of the texts
    // written; anything else is ignored. Only the exact text "cm" selects
    // centimetres; an option here is one of 3.
    void storedChoicesAreReadStrictly_data()
    {
        addTable<QString, bool, std::optional<int>, std::optional<bool>>({"stored", "centimetres", "option", "switch"},
            {{"cm", "cm", true, {}, {}}, {"CM", "CM", false, {}, {}}, {"Cm", "Cm", false, {}, {}},
             {"in", "in", false, {}, {}}, {"empty", "", false, {}, {}}, {"blank, cm", " cm", false, {}, {}},
             {"1", "1", false, 1, {}}, {"3", "3", false, 3, {}}, {"0", "0", false, {}, {}}, {"4", "4", false, {}, {}},
             {"-1", "-1", false, {}, {}}, {"blank, 2", " 2", false, {}, {}}, {"2, blank", "2 ", false, {}, {}},
             {"02", "02", false, {}, {}}, {"+2", "+2", false, {}, {}}, {"2.0", "2.0", false, {}, {}},
             {"x", "x", false, {}, {}}, {"Arabic 2", "\u0662", false, {}, {}}, {"on", "on", false, {}, true},
             {"off", "off", false, {}, false}, {"On", "On", false, {}, {}}, {"true", "true", false, {}, {}},
             {"on, blank", "on ", false, {}, {}}});
    }
    void storedChoicesAreReadStrictly()
    {
        QFETCH(QString, stored);
        QTEST(unitsAreCentimetres(stored), "centimetres");
        QTEST(optionFromSetting(stored, 3), "option");
        QTEST(switchFromSetting(stored), "switch");
    }

    // A stored number counts only as the exact text of one within its bounds.
    void storedNumbersKeepTheirBounds()
    {
        QCOMPARE(numberFromSetting(QStringLiteral("2"), 2, 11), 2);
        QCOMPARE(numberFromSetting(QStringLiteral("11"), 2, 11), 11);
        for (const char *stored : {"1", "12", "011", "+5", "5 ", "", "-3"})
            QVERIFY2(!numberFromSetting(QString::fromLatin1(stored), 2, 11), stored);
        QCOMPARE(numberFromSetting(QStringLiteral("-3"), -5, -1), -3);
    }

private:
    std::unique_ptr<QTemporaryDir> dir_;
};

QTEST_GUILESS_MAIN(TestSettings)
#include "tst_settings.moc"
