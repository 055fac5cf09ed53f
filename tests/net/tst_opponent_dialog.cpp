// "Human Opponent": the network controls follow "Network Play", each role
// shows its own settings, and a port that is no port keeps the dialog open
// with the reason.

#include "../support/test_home.h"
#include "ui/net/opponent_name_dialog.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

using namespace tavrix;

class TestOpponentDialog : public QObject {
    Q_OBJECT

private slots:
    void networkSettingsAndPorts()
    {
        QWidget main;
        main.resize(800, 600);
        OpponentNameDialog dialog(&main);
        auto *check = findControl<QCheckBox>(&dialog, "Check1");
        auto *name = findControl<QLineEdit>(&dialog, "Text1");
        auto *client = findControl<QRadioButton>(&dialog, "opBeClient");
        auto *server = findControl<QRadioButton>(&dialog, "opBeServer");
        auto *ok = findControl<QPushButton>(&dialog, "OKButton");
        auto *problem = findControl<QLabel>(&dialog, "lblPortProblem");
        dialog.show();
        QVERIFY(name->isEnabled() && !client->isEnabled() && !findControl<QLineEdit>(&dialog, "txtClientHost")->isEnabled());

        check->click();
        QVERIFY(!name->isEnabled() && client->isEnabled());
        server->click();
        QVERIFY(!findControl<QGroupBox>(&dialog, "fraClientSettings")->isVisible());

        // A bad server port keeps the dialog open, whatever the client's says.
        findControl<QLineEdit>(&dialog, "txtServerPort")->setText(QStringLiteral("80a"));
        findControl<QLineEdit>(&dialog, "txtClientPort")->setText(QStringLiteral("x"));
        ok->click();
        QVERIFY(dialog.isVisible() && problem->isVisible());
        QCOMPARE(problem->text(), QStringLiteral("The port must be a whole number from 1 to 65535, not \"80a\"."));
        findControl<QLineEdit>(&dialog, "txtServerPort")->setText(QStringLiteral("14000"));
        ok->click();
        QVERIFY(!dialog.isVisible() && !dialog.cancelled());

        // Without network play the ports do not matter.
        dialog.show();
        check->click();
        name->setText(QStringLiteral("Bob O'Neil"));
        ok->click();
        QVERIFY(!dialog.isVisible());
        QCOMPARE(dialog.opponentName(), QStringLiteral("Bob O'Neil"));
        QCOMPARE(dialog.getChkNetworkPlay(), 0);
    }
};

QTEST_MAIN(TestOpponentDialog)
#include "tst_opponent_dialog.moc"
