#pragma once

// "Club Database Password": asks for the password of the club database's
// user when the server wants one that neither the URI, the password file
// nor PGPASSWORD gave.

#include "core/stats/store_address.h"

#include <QDialog>

#include <optional>

class QLineEdit;

namespace tavrix {

class ServerPasswordDialog : public QDialog {
    Q_OBJECT

public:
    // `why`, when given, comes before the prompt: what the server said.
    ServerPasswordDialog(const ServerAddress &server, QWidget *parent, const QString &why = {});

    // The password typed, or nothing when the user cancelled.
    static std::optional<QString> ask(const ServerAddress &server, QWidget *parent, const QString &why = {});
    // "Password of ann for the club database at club.example.org, port 5432:"
    static QString promptFor(const ServerAddress &server);

private:
    QLineEdit *password_ = nullptr;
};

} // namespace tavrix
