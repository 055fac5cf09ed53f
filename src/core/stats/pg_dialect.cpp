// PLACEHOLDER, replaced wholesale by the server dialect's own file.

#include "core/stats/store_dialect.h"

#include <QSqlError>

namespace tavrix {

namespace {

class PendingDialect final : public StoreDialect {
public:
    QString driver() const override { return QStringLiteral("QPSQL"); }
    bool isServer() const override { return true; }
    QString prepare(QSqlDatabase &) const override { return QStringLiteral("not ready"); }
    std::optional<StoreVersion> changeStamp(QSqlDatabase &, QString &error) const override
    {
        error = QStringLiteral("not ready");
        return std::nullopt;
    }
    bool holdsTable(QSqlDatabase &, const char *) const override { return false; }
    QString writeOrder() const override { return QStringLiteral("id"); }
    QString afterGivenIds(QSqlDatabase &, const char *) const override { return {}; }
    QString describeError(const QSqlError &error, const QString &) const override { return error.text(); }
};

} // namespace

const StoreDialect &postgresDialect()
{
    static const PendingDialect dialect;
    return dialect;
}

} // namespace tavrix
