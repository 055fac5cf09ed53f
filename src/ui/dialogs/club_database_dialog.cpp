#include "ui/dialogs/club_database_dialog.h"

#include "core/net/net_link.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QRegularExpression>
#include <QPushButton>
#include <QVBoxLayout>
#include <QtConcurrent/QtConcurrentRun>

namespace tavrix {

namespace {

// The TLS modes offered, the usual one first.
constexpr std::pair<TlsMode, const char *> tlsChoices[] = {
    {TlsMode::Prefer, "Use TLS when the server offers it"},
    {TlsMode::Require, "Always use TLS"},
    {TlsMode::VerifyFull, "Always use TLS and check the server's certificate"},
    {TlsMode::Disable, "Never use TLS"}};

template <typename W>
W *named(W *widget, const char *name)
{
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

QLineEdit *field(const QString &text, const char *name, QWidget *parent)
{
    auto *edit = named(new QLineEdit(text, parent), name);
    edit->setMinimumWidth(260);
    return edit;
}

// Host names and user names are shown as typed, never read as markup.
QLabel *plainLabel(const char *name, QWidget *parent)
{
    auto *label = named(new QLabel(parent), name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

ClubDatabaseDialog::ClubDatabaseDialog(const std::optional<ServerAddress> &inUse, QWidget *parent)
    : QDialog(parent)
    , stored_(readClubSettings())
{
    setObjectName(QStringLiteral("frmClubDatabase"));
    setWindowTitle(QStringLiteral("Club Database"));
    setModal(true);
    auto *layout = new QVBoxLayout(this);
    auto *intro = new QLabel(QStringLiteral("The boards of a club can keep their statistics in one PostgreSQL "
                                            "database, so that each player has one record wherever he throws."),
                             this);
    intro->setWordWrap(true);
    layout->addWidget(intro);

    const ServerAddress &server = inUse ? *inUse : stored_.server;
    auto *form = new QFormLayout;
    host_ = field(server.host, "txtClubHost", this);
    host_->setPlaceholderText(QStringLiteral("empty: the server on this computer"));
    port_ = field(QString::number(server.port), "txtClubPort", this);
    database_ = field(server.database, "txtClubDatabase", this);
    database_->setPlaceholderText(QStringLiteral("empty: named as the user"));
    user_ = field(server.user, "txtClubUser", this);
    tls_ = named(new QComboBox(this), "cboClubTls");
    for (const auto &[mode, caption] : tlsChoices)
        tls_->addItem(QString::fromLatin1(caption), static_cast<int>(mode));
    // A mode the list does not offer (written in a URI) stays as it was.
    if (tls_->findData(static_cast<int>(server.tls)) < 0)
        tls_->addItem(QStringLiteral("TLS mode %1").arg(tlsModeName(server.tls)), static_cast<int>(server.tls));
    tls_->setCurrentIndex(tls_->findData(static_cast<int>(server.tls)));
    password_ = field(QString(), "txtClubPassword", this);
    password_->setEchoMode(QLineEdit::Password);
    form->addRow(QStringLiteral("Host:"), host_);
    form->addRow(QStringLiteral("Port:"), port_);
    form->addRow(QStringLiteral("Database:"), database_);
    form->addRow(QStringLiteral("User:"), user_);
    form->addRow(QStringLiteral("TLS:"), tls_);
    form->addRow(QStringLiteral("Password:"), password_);
    auto *passwordNote = new QLabel(QStringLiteral("The password is kept only while Tavrix runs. Left empty, "
                                                   "PostgreSQL's ~/.pgpass file or PGPASSWORD gives it."),
                                    this);
    passwordNote->setWordWrap(true);
    form->addRow(QString(), passwordNote);
    layout->addLayout(form);

    problem_ = plainLabel("lblClubProblem", this);
    problem_->setStyleSheet(QStringLiteral("color: #b00000;"));
    problem_->hide();
    layout->addWidget(problem_);

    auto *test = new QHBoxLayout;
    testButton_ = named(new QPushButton(QStringLiteral("Test Connection"), this), "cmdTestConnection");
    testButton_->setAutoDefault(false);
    testResult_ = plainLabel("lblClubTestResult", this);
    testResult_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    test->addWidget(testButton_, 0, Qt::AlignTop);
    test->addWidget(testResult_, 1);
    layout->addLayout(test);

    auto *buttons = new QHBoxLayout;
    auto *useClub = named(new QPushButton(QStringLiteral("Use Club Database"), this), "cmdUseClub");
    useClub->setDefault(true);
    auto *useLocal = named(new QPushButton(QStringLiteral("Use Local File"), this), "cmdUseLocalFile");
    useLocal->setEnabled(inUse.has_value());
    useLocal->setAutoDefault(false);
    auto *cancel = named(new QPushButton(QStringLiteral("Cancel"), this), "cmdCancel");
    cancel->setAutoDefault(false);
    buttons->addStretch();
    buttons->addWidget(useClub);
    buttons->addWidget(useLocal);
    buttons->addWidget(cancel);
    layout->addLayout(buttons);
    // The labels wrap within the width the fields ask for.
    layout->setSizeConstraint(QLayout::SetFixedSize);
    setMaximumWidth(760);

    connect(testButton_, &QPushButton::clicked, this, &ClubDatabaseDialog::testConnection);
    connect(&test_, &QFutureWatcher<std::optional<ServerFailure>>::finished, this,
            &ClubDatabaseDialog::showTestResult);
    connect(useClub, &QPushButton::clicked, this, &ClubDatabaseDialog::useClub);
    connect(useLocal, &QPushButton::clicked, this, &ClubDatabaseDialog::useLocalFile);
    connect(cancel, &QPushButton::clicked, this, &ClubDatabaseDialog::reject);
}

ClubChoice ClubDatabaseDialog::ask(const std::optional<ServerAddress> &inUse, QWidget *parent)
{
    // The window may be taken down while the dialog is open.
    QPointer<ClubDatabaseDialog> dialog = new ClubDatabaseDialog(inUse, parent);
    dialog->exec();
    if (!dialog)
        return {};
    const ClubChoice choice = dialog->choice();
    delete dialog;
    return choice;
}

std::optional<ServerAddress> ClubDatabaseDialog::typedServer()
{
    ServerAddress server;
    server.host = host_->text().trimmed();
    server.database = database_->text();
    server.user = user_->text();
    server.tls = static_cast<TlsMode>(tls_->currentData().toInt());
    const PortChoice port = parsePort(port_->text());
    QLineEdit *wrong = nullptr;
    QString problem;
    if (server.host.contains(QRegularExpression(QStringLiteral("\\s")))) {
        wrong = host_;
        problem = QStringLiteral("The host is a name or an address without spaces, not \"%1\".").arg(server.host);
    } else if (!port.port) {
        wrong = port_;
        problem = port.problem;
    } else if (!clubIsComplete(server)) {
        wrong = user_;
        problem = QStringLiteral("Enter the user this board logs in as on the club's server.");
    }
    showProblem(problem);
    if (wrong) {
        wrong->setFocus();
        wrong->selectAll();
        return std::nullopt;
    }
    server.port = *port.port;
    return server;
}

void ClubDatabaseDialog::showProblem(const QString &problem)
{
    problem_->setText(problem);
    problem_->setVisible(!problem.isEmpty());
}

void ClubDatabaseDialog::testConnection()
{
    const std::optional<ServerAddress> server = typedServer();
    if (!server)
        return;
    tested_ = *server;
    testing_ = true;
    testButton_->setEnabled(false);
    testResult_->setText(QStringLiteral("Trying %1...").arg(describeServer(tested_)));
    // The answer may take the whole connect timeout; the dialog stays usable.
    setCursor(Qt::BusyCursor);
    const QString password = password_->text();
    test_.setFuture(QtConcurrent::run([server = tested_, password] { return testServerConnection(server, password); }));
}

void ClubDatabaseDialog::showTestResult()
{
    testing_ = false;
    unsetCursor();
    testButton_->setEnabled(true);
    const std::optional<ServerFailure> failure = test_.result();
    testResult_->setText(failure ? failure->message + QLatin1Char('.')
                                 : QStringLiteral("Connected to %1.").arg(describeServer(tested_)));
}

void ClubDatabaseDialog::useClub()
{
    const std::optional<ServerAddress> server = typedServer();
    if (!server)
        return;
    saveClubSettings({*server, true});
    choice_ = {ClubChoice::UseClub, *server, password_->text()};
    accept();
}

void ClubDatabaseDialog::useLocalFile()
{
    saveClubInUse(false);
    choice_ = {ClubChoice::UseLocalFile, stored_.server, {}};
    accept();
}

} // namespace tavrix
