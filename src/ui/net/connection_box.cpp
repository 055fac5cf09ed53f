#include "ui/net/connection_box.h"

#include "core/net/local_addresses.h"
#include "core/net/net_link.h"

#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace tavrix {

MyCancelBox::MyCancelBox(NetLink &link, std::function<std::pair<QString, QString>()> clientAddress,
                         QWidget *mainWindow)
    : QDialog(mainWindow)
    , link_(link)
    , clientAddress_(std::move(clientAddress))
    , addressSource_(interfaceAddresses)
    , label_(new QLabel(QStringLiteral("Connecting...."), this))
    , addresses_(new QLabel(this))
    , cancel_(new QPushButton(QStringLiteral("Cancel"), this))
    , timer_(new QTimer(this))
{
    setObjectName(QStringLiteral("MyCancelBox"));
    setWindowTitle(QStringLiteral("Establishing Network Connection"));
    // Modal without blocking: socket and timer events go on while it shows.
    setWindowModality(Qt::ApplicationModal);
    label_->setObjectName(QStringLiteral("Label1"));
    label_->setWordWrap(true);
    // It names the opponent, perhaps as another copy of the program sent it.
    label_->setTextFormat(Qt::PlainText);
    label_->setMinimumWidth(320);
    addresses_->setObjectName(QStringLiteral("lblLocalAddresses"));
    addresses_->setWordWrap(true);
    addresses_->setTextFormat(Qt::PlainText);
    // Selectable, so the address can be copied into a message to the caller.
    addresses_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    addresses_->hide();
    cancel_->setObjectName(QStringLiteral("CancelButton"));
    timer_->setObjectName(QStringLiteral("SocketTimer"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(label_);
    layout->addWidget(addresses_);
    layout->addWidget(cancel_, 0, Qt::AlignRight);
    connect(cancel_, &QPushButton::clicked, this, &MyCancelBox::cancelClicked);
    connect(timer_, &QTimer::timeout, this, &MyCancelBox::socketTimerTick);
}

void MyCancelBox::serverListen(const QString &name, const QString &port)
{
    server_ = true;
    name_ = name;
    cancel_->setText(QStringLiteral("Cancel"));
    label_->setText(QStringLiteral("Waiting for connection from ") + name + QStringLiteral(" on port ") + port);
    const PortChoice choice = parsePort(port);
    if (choice.port)
        addresses_->setText(localAddressesText(addressSource_ ? addressSource_() : QList<QHostAddress>(), *choice.port));
    addresses_->setVisible(bool(choice.port));
    show();
    if (!choice.port) {
        giveUp(choice.problem);
        return;
    }
    // Whatever the link held (a connection whose peer left) is closed first.
    if (!link_.listen(*choice.port)) {
        giveUp(link_.lastError());
        return;
    }
    timer_->start(serverWaitMs);
}

void MyCancelBox::clientConnect(const QString &name, const QString &host, const QString &port)
{
    server_ = false;
    name_ = name;
    connectAttempts_ = 0;
    cancel_->setText(QStringLiteral("Cancel"));
    addresses_->hide();
    attempt(host, port);
    show();
}

void MyCancelBox::attempt(const QString &host, const QString &port)
{
    label_->setText(QStringLiteral("Connecting to ") + name_ + QStringLiteral(" at host ") + host
                    + QStringLiteral(" on port ") + port + QStringLiteral(" (attempt #")
                    + QString::number(connectAttempts_ + 1) + QStringLiteral(")"));
    timer_->start(clientRetryMs);
    // A port that is no port is one more failed attempt.
    if (const PortChoice choice = parsePort(port); choice.port)
        link_.connectTo(host, *choice.port);
    else
        link_.close();
}

void MyCancelBox::socketTimerTick()
{
    if (server_ || connectAttempts_ >= clientRetries) {
        connectTimedOut();
        return;
    }
    ++connectAttempts_;
    const auto [host, port] = clientAddress_();
    attempt(host, port);
}

void MyCancelBox::connectTimedOut()
{
    giveUp(QStringLiteral("Connection attempt timed out."));
}

void MyCancelBox::giveUp(const QString &text)
{
    label_->setText(text);
    // Nobody is waited for any more.
    addresses_->hide();
    link_.close();
    cancel_->setText(QStringLiteral("Close"));
    timer_->stop();
    emit startAllowed();
}

void MyCancelBox::cancelClicked()
{
    link_.close();
    timer_->stop();
    hide();
    emit startAllowed();
}

void MyCancelBox::connectionEstablished()
{
    timer_->stop();
    hide();
}

} // namespace tavrix
