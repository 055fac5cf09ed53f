#pragma once

// "Club Database": where the club's PostgreSQL server is, a test of the
// connection, and the choice to keep the statistics there or in the local
// file again. The choice is stored when made, without the password.

#include "core/startup/club_settings.h"
#include "core/stats/server_connection.h"

#include <QDialog>
#include <QFutureWatcher>

#include <optional>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace tavrix {

class ClubDatabaseDialog : public QDialog {
    Q_OBJECT

public:
    // The fields show `inUse`, the server the statistics are kept on now
    // (named at start or chosen here), else the stored club database; "Use
    // Local File" can be chosen only while a server is in use.
    ClubDatabaseDialog(const std::optional<ServerAddress> &inUse, QWidget *parent);

    // Shows the dialog and waits for the choice.
    static ClubChoice ask(const std::optional<ServerAddress> &inUse, QWidget *parent);
    ClubChoice choice() const { return choice_; }
    // Whether a connection test is under way, its result not yet shown.
    bool testing() const { return testing_; }

private:
    // The server the fields name, or nothing with the reason shown.
    std::optional<ServerAddress> typedServer();
    void showProblem(const QString &problem);
    void testConnection();
    void showTestResult();
    void useClub();
    void useLocalFile();

    QLineEdit *host_ = nullptr;
    QLineEdit *port_ = nullptr;
    QLineEdit *database_ = nullptr;
    QLineEdit *user_ = nullptr;
    QComboBox *tls_ = nullptr;
    QLineEdit *password_ = nullptr;
    QLabel *problem_ = nullptr;
    QLabel *testResult_ = nullptr;
    QPushButton *testButton_ = nullptr;
    ClubSettings stored_;
    // The server under test, named in the result.
    ServerAddress tested_;
    QFutureWatcher<std::optional<ServerFailure>> test_;
    bool testing_ = false;
    ClubChoice choice_;
};

} // namespace tavrix
