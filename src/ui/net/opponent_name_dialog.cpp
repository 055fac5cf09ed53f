#include "ui/net/opponent_name_dialog.h"

#include "ui/dialogs/placement.h"
#include "core/net/net_link.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace tavrix {

namespace {

template <typename W>
W *named(W *widget, const char *name)
{
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

} // namespace

OpponentNameDialog::OpponentNameDialog(QWidget *mainWindow)
    : QDialog(mainWindow)
    , mainWindow_(mainWindow)
{
    setObjectName(QStringLiteral("OpponentNameDialog"));
    setWindowTitle(QStringLiteral("Human Opponent"));
    setModal(true);
    auto *layout = new QVBoxLayout(this);
    label1_ = named(new QLabel(QStringLiteral("Enter opponent's name:"), this), "Label1");
    text1_ = named(new QLineEdit(this), "Text1");
    layout->addWidget(label1_);
    layout->addWidget(text1_);

    auto *network = named(new QGroupBox(QStringLiteral("Network Settings"), this), "fraNetwork");
    auto *networkLayout = new QVBoxLayout(network);
    check1_ = named(new QCheckBox(QStringLiteral("Network Play"), network), "Check1");
    networkLayout->addWidget(check1_);
    clientServer_ = named(new QGroupBox(QStringLiteral("Client/Server"), network), "fraClientServer");
    // The roles side by side and the host beside its port keep the dialog
    // short enough for an 800 x 600 screen, whichever role shows.
    auto *roles = new QHBoxLayout(clientServer_);
    beClient_ = named(new QRadioButton(QStringLiteral("Be Client (\"call\")"), clientServer_), "opBeClient");
    beServer_ = named(new QRadioButton(QStringLiteral("Be Server (\"answer\")"), clientServer_), "opBeServer");
    auto *group = new QButtonGroup(clientServer_);
    group->addButton(beClient_);
    group->addButton(beServer_);
    roles->addWidget(beClient_);
    roles->addWidget(beServer_);
    networkLayout->addWidget(clientServer_);

    clientSettings_ = named(new QGroupBox(QStringLiteral("Client Settings"), network), "fraClientSettings");
    auto *client = new QHBoxLayout(clientSettings_);
    auto *hostLabel = named(new QLabel(QStringLiteral("Host:"), clientSettings_), "Label2");
    auto *clientPortLabel = named(new QLabel(QStringLiteral("Port:"), clientSettings_), "Label4");
    clientHost_ = named(new QLineEdit(QStringLiteral("192.168.1.2"), clientSettings_), "txtClientHost");
    clientPort_ = named(new QLineEdit(QStringLiteral("13999"), clientSettings_), "txtClientPort");
    client->addWidget(hostLabel);
    client->addWidget(clientHost_, 3);
    client->addWidget(clientPortLabel);
    client->addWidget(clientPort_, 1);
    serverSettings_ = named(new QGroupBox(QStringLiteral("Server Settings"), network), "fraServerSettings");
    auto *server = new QFormLayout(serverSettings_);
    serverPort_ = named(new QLineEdit(QStringLiteral("13999"), serverSettings_), "txtServerPort");
    server->addRow(named(new QLabel(QStringLiteral("Port:"), serverSettings_), "Label3"), serverPort_);
    // The two settings frames share one place: only the chosen role's shows.
    networkLayout->addWidget(clientSettings_);
    networkLayout->addWidget(serverSettings_);
    serverSettings_->hide();
    layout->addWidget(network);
    networkControls_ = {clientServer_, beClient_, beServer_, clientPort_, clientHost_, hostLabel,
                        clientPortLabel, serverPort_, clientSettings_, serverSettings_};

    // Says what is wrong with a port before the dialog lets go of it.
    portProblem_ = named(new QLabel(this), "lblPortProblem");
    portProblem_->setWordWrap(true);
    portProblem_->setStyleSheet(QStringLiteral("color: #b00000;"));
    portProblem_->hide();
    layout->addWidget(portProblem_);

    auto *buttons = new QDialogButtonBox(this);
    QPushButton *ok = named(buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole), "OKButton");
    ok->setDefault(true);
    QPushButton *cancel =
        named(buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole), "CancelButton");
    connect(ok, &QPushButton::clicked, this, &OpponentNameDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &OpponentNameDialog::reject);
    layout->addWidget(buttons);

    connect(check1_, &QCheckBox::clicked, this, &OpponentNameDialog::networkPlayClicked);
    connect(beClient_, &QRadioButton::clicked, this, &OpponentNameDialog::roleClicked);
    connect(beServer_, &QRadioButton::clicked, this, &OpponentNameDialog::roleClicked);
}

void OpponentNameDialog::showEvent(QShowEvent *event)
{
    // Left edge 350 twips inside the main window, bottom 900 twips above its bottom.
    if (mainWindow_) {
        const QRect main = mainWindow_->frameGeometry();
        move(main.left() + pixelsFromTwips(350),
             main.top() + main.height() - (frameGeometry().height() + pixelsFromTwips(900)));
    }
    networkPlayClicked();
    keepOnScreen(this);
    cancelled_ = false;
    QDialog::showEvent(event);
}

void OpponentNameDialog::networkPlayClicked()
{
    const bool on = check1_->isChecked();
    for (QWidget *control : std::as_const(networkControls_))
        control->setEnabled(on);
    if (!beClient_->isChecked() && !beServer_->isChecked()) {
        beClient_->setChecked(true);
        roleClicked();
    }
    // In network play the opponent's name comes from the other side.
    text1_->setEnabled(!on);
    label1_->setEnabled(!on);
}

void OpponentNameDialog::roleClicked()
{
    clientSettings_->setVisible(beClient_->isChecked());
    serverSettings_->setVisible(beServer_->isChecked());
    // A role's settings may need more room than the other's: the dialog
    // takes its new size at once and stays on the screen with it.
    if (isVisible()) {
        adjustSize();
        keepOnScreen(this);
    }
}

void OpponentNameDialog::accept()
{
    if (check1_->isChecked()) {
        QLineEdit *port = beServer_->isChecked() ? serverPort_ : clientPort_;
        const PortChoice choice = parsePort(port->text());
        portProblem_->setText(choice.problem);
        portProblem_->setVisible(!choice.port);
        if (!choice.port) {
            port->setFocus();
            port->selectAll();
            return;
        }
    }
    portProblem_->hide();
    if (!check1_->isChecked())
        opponentName_ = text1_->text();
    cancelled_ = false;
    QDialog::accept();
}

void OpponentNameDialog::reject()
{
    cancelled_ = true;
    QDialog::reject();
}

int OpponentNameDialog::getChkNetworkPlay() const { return check1_->isChecked() ? 1 : 0; }
bool OpponentNameDialog::getOpBeClient() const { return beClient_->isChecked(); }
bool OpponentNameDialog::getOpBeServer() const { return beServer_->isChecked(); }
QString OpponentNameDialog::getTxtClientHost() const { return clientHost_->text(); }
QString OpponentNameDialog::getTxtClientPort() const { return clientPort_->text(); }
QString OpponentNameDialog::getTxtServerPort() const { return serverPort_->text(); }

} // namespace tavrix
