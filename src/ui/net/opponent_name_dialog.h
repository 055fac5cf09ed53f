#pragma once

// "Human Opponent": the name of a second player, or the settings of a game
// against another copy of the program over the network.

#include <QDialog>

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace tavrix {

class OpponentNameDialog : public QDialog {
    Q_OBJECT

public:
    explicit OpponentNameDialog(QWidget *mainWindow);

    bool cancelled() const { return cancelled_; }
    // The name typed for a person at this board, kept from one game to the
    // next; a network game leaves it as it was.
    QString opponentName() const { return opponentName_; }
    int getChkNetworkPlay() const;
    bool getOpBeClient() const;
    bool getOpBeServer() const;
    QString getTxtClientHost() const;
    QString getTxtClientPort() const;
    QString getTxtServerPort() const;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void networkPlayClicked();
    void roleClicked();
    void accept() override;
    void reject() override;

    QString opponentName_;
    QWidget *mainWindow_;
    bool cancelled_ = false;
    QLabel *label1_ = nullptr;
    QLineEdit *text1_ = nullptr;
    QCheckBox *check1_ = nullptr;
    QGroupBox *clientServer_ = nullptr;
    QRadioButton *beClient_ = nullptr;
    QRadioButton *beServer_ = nullptr;
    QGroupBox *clientSettings_ = nullptr;
    QGroupBox *serverSettings_ = nullptr;
    QLineEdit *clientHost_ = nullptr;
    QLineEdit *clientPort_ = nullptr;
    QLineEdit *serverPort_ = nullptr;
    QList<QWidget *> networkControls_;
    QLabel *portProblem_ = nullptr;
};

} // namespace tavrix
