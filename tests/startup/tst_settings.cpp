#include "startup/settings.h"

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
        QVERIFY(dir_->isValid());
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, dir_->path());
    }

    // A first start has no settings; the defaults are written once and a
    // later start finds them, with what the user chose kept.
    void firstStartWritesDefaultsOnce()
    {
        QVERIFY(!settingsStored());
        QCOMPARE(getSetting(QStringLiteral("Units")), QString());
        createDefaultSettings();
        QVERIFY(settingsStored());
        QCOMPARE(getSetting(QStringLiteral("Units")), QStringLiteral("in"));
        saveSetting(QStringLiteral("Units"), QStringLiteral("cm"));
        QCOMPARE(getSetting(QStringLiteral("Units")), QStringLiteral("cm"));
        QVERIFY(QFile::exists(dir_->filePath(QStringLiteral("Halvern/Tavrix!.ini"))));
    }

    // Only the exact text "cm" selects centimetres.
    void unitsComparisonIsExact()
    {
        QVERIFY(unitsAreCentimetres(QStringLiteral("cm")));
        QVERIFY(!unitsAreCentimetres(QStringLiteral("CM")));
        QVERIFY(!unitsAreCentimetres(QStringLiteral("Cm")));
        QVERIFY(!unitsAreCentimetres(QStringLiteral("in")));
        QVERIFY(!unitsAreCentimetres(QString()));
        QVERIFY(!unitsAreCentimetres(QStringLiteral(" cm")));
    }

private:
    std::unique_ptr<QTemporaryDir> dir_;
};

QTEST_GUILESS_MAIN(TestSettings)
#include "tst_settings.moc"
