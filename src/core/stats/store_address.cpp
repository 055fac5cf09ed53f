#include "core/stats/store_address.h"

#include <QRegularExpression>
#include <QUrl>

#include <array>
#include <utility>

namespace tavrix {

namespace {

constexpr std::array<std::pair<TlsMode, const char *>, 6> tlsNames{{{TlsMode::Disable, "disable"},
                                                                   {TlsMode::Allow, "allow"},
                                                                   {TlsMode::Prefer, "prefer"},
                                                                   {TlsMode::Require, "require"},
                                                                   {TlsMode::VerifyCa, "verify-ca"},
                                                                   {TlsMode::VerifyFull, "verify-full"}}};

constexpr int longestTimeout = 3600;

// Text between escapes, decoded; a "%" not followed by two hexadecimal
// digits is an error, not a literal, so that a mistyped password is not
// silently changed.
std::optional<QString> decoded(QStringView text)
{
    static const QRegularExpression badEscape(QStringLiteral("%(?![0-9A-Fa-f]{2})"));
    if (badEscape.match(text).hasMatch())
        return std::nullopt;
    return QUrl::fromPercentEncoding(text.toUtf8());
}

// Digits only, within [low, high].
std::optional<int> wholeNumber(const QString &text, int low, int high)
{
    static const QRegularExpression digits(QStringLiteral("^[0-9]{1,6}$"));
    if (!digits.match(text).hasMatch())
        return std::nullopt;
    const int value = text.toInt();
    if (value < low || value > high)
        return std::nullopt;
    return value;
}

QString quoted(const QString &text) { return QLatin1Char('"') + text + QLatin1Char('"'); }

const QString badEscapeReason = QStringLiteral("a \"%\" in it is not followed by two hexadecimal digits");

// Reads "host", "host:port", "[v6]" or "[v6]:port" into `server`; the reason
// when it cannot.
std::optional<QString> readHostAndPort(QStringView text, ServerAddress &server)
{
    if (text.contains(u','))
        return QStringLiteral("it names more than one server");
    QStringView host = text;
    std::optional<QStringView> port;
    if (text.startsWith(u'[')) {
        const qsizetype close = text.indexOf(u']');
        if (close < 0)
            return QStringLiteral("its server address opens a \"[\" and never closes it");
        host = text.sliced(1, close - 1);
        const QStringView after = text.sliced(close + 1);
        if (!after.isEmpty() && !after.startsWith(u':'))
            return QStringLiteral("something follows the server address where only a port may");
        if (!after.isEmpty())
            port = after.sliced(1);
        static const QRegularExpression v6(QStringLiteral("^[0-9A-Fa-f:.]+$"));
        if (!v6.match(host).hasMatch())
            return QStringLiteral("its server address ") + quoted(host.toString()) + QStringLiteral(" is no IPv6 address");
        server.host = host.toString();
    } else {
        const qsizetype colon = text.indexOf(u':');
        if (colon >= 0) {
            host = text.first(colon);
            port = text.sliced(colon + 1);
        }
        const std::optional<QString> name = decoded(host);
        if (!name)
            return badEscapeReason;
        static const QRegularExpression hostName(QStringLiteral("^[A-Za-z0-9._-]*$"));
        if (!hostName.match(*name).hasMatch())
            return QStringLiteral("its server name ") + quoted(*name)
                   + QStringLiteral(" holds characters no server name has");
        server.host = *name;
    }
    if (port) {
        const std::optional<int> number = wholeNumber(port->toString(), 1, 65535);
        if (!number)
            return QStringLiteral("its port ") + quoted(port->toString())
                   + QStringLiteral(" is not a number from 1 to 65535");
        server.port = *number;
    }
    return std::nullopt;
}

std::optional<QString> readUserInfo(QStringView text, ServerAddress &server)
{
    const qsizetype colon = text.indexOf(u':');
    const std::optional<QString> user = decoded(colon < 0 ? text : text.first(colon));
    if (!user)
        return badEscapeReason;
    server.user = *user;
    if (colon >= 0) {
        const std::optional<QString> password = decoded(text.sliced(colon + 1));
        if (!password)
            return badEscapeReason;
        server.password = *password;
    }
    return std::nullopt;
}

std::optional<QString> readOptions(QStringView query, ServerAddress &server)
{
    for (QStringView pair : query.split(u'&', Qt::SkipEmptyParts)) {
        const qsizetype equals = pair.indexOf(u'=');
        const QString name = (equals < 0 ? pair : pair.first(equals)).toString();
        const std::optional<QString> value = decoded(equals < 0 ? QStringView() : pair.sliced(equals + 1));
        if (!value)
            return badEscapeReason;
        if (name == u"sslmode") {
            const std::optional<TlsMode> mode = tlsModeNamed(*value);
            if (!mode)
                return QStringLiteral("its TLS mode ") + quoted(*value)
                       + QStringLiteral(" is none of disable, allow, prefer, require, verify-ca and verify-full");
            server.tls = *mode;
        } else if (name == u"connect_timeout") {
            const std::optional<int> seconds = wholeNumber(*value, 1, longestTimeout);
            if (!seconds)
                return QStringLiteral("its connect_timeout ") + quoted(*value)
                       + QStringLiteral(" is not a number of seconds from 1 to %1").arg(longestTimeout);
            server.connectTimeout = *seconds;
        } else {
            return QStringLiteral("it has the option ") + quoted(name) + QStringLiteral(", which Tavrix does not use");
        }
    }
    return std::nullopt;
}

} // namespace

bool namesServer(const QString &value)
{
    return value.startsWith(QLatin1String("postgresql://"), Qt::CaseInsensitive)
           || value.startsWith(QLatin1String("postgres://"), Qt::CaseInsensitive);
}

std::variant<StoreAddress, QString> readStoreAddress(const QString &value)
{
    if (!namesServer(value))
        return StoreAddress{value};
    QStringView rest = QStringView(value).sliced(value.indexOf(QLatin1String("://")) + 3);
    if (rest.contains(u'#'))
        return QStringLiteral("a \"#\" in it must be written %23");
    ServerAddress server;
    const qsizetype question = rest.indexOf(u'?');
    if (question >= 0) {
        if (std::optional<QString> reason = readOptions(rest.sliced(question + 1), server))
            return *reason;
        rest = rest.first(question);
    }
    const qsizetype slash = rest.indexOf(u'/');
    QStringView authority = slash < 0 ? rest : rest.first(slash);
    if (slash >= 0) {
        const QStringView path = rest.sliced(slash + 1);
        if (path.contains(u'/'))
            return QStringLiteral("it names a folder below the database, which a server does not have");
        const std::optional<QString> database = decoded(path);
        if (!database)
            return badEscapeReason;
        server.database = *database;
    }
    // A password may hold "@" only escaped, so the last "@" ends the user.
    const qsizetype at = authority.lastIndexOf(u'@');
    if (at >= 0) {
        if (std::optional<QString> reason = readUserInfo(authority.first(at), server))
            return *reason;
        authority = authority.sliced(at + 1);
    }
    if (std::optional<QString> reason = readHostAndPort(authority, server))
        return *reason;
    return StoreAddress{server};
}

QString serverUri(const ServerAddress &server)
{
    QString uri = QStringLiteral("postgresql://");
    if (!server.user.isEmpty())
        uri += QString::fromLatin1(QUrl::toPercentEncoding(server.user)) + QLatin1Char('@');
    uri += server.host.contains(u':') ? QLatin1Char('[') + server.host + QLatin1Char(']')
                                      : QString::fromLatin1(QUrl::toPercentEncoding(server.host, "."));
    uri += QLatin1Char(':') + QString::number(server.port) + QLatin1Char('/')
           + QString::fromLatin1(QUrl::toPercentEncoding(server.database));
    QStringList options;
    if (server.tls != TlsMode::Prefer)
        options << QStringLiteral("sslmode=") + tlsModeName(server.tls);
    if (server.connectTimeout != ServerAddress{}.connectTimeout)
        options << QStringLiteral("connect_timeout=%1").arg(server.connectTimeout);
    if (!options.isEmpty())
        uri += QLatin1Char('?') + options.join(QLatin1Char('&'));
    return uri;
}

QString describeServer(const ServerAddress &server)
{
    const QString where = server.host.isEmpty() ? QStringLiteral("the server on this computer")
                                                : QStringLiteral("%1:%2").arg(server.host).arg(server.port);
    QString text = server.user.isEmpty() ? where : server.user + QStringLiteral(" at ") + where;
    if (!server.databaseName().isEmpty())
        text += QStringLiteral(", database ") + server.databaseName();
    return text;
}

QString connectOptions(const ServerAddress &server)
{
    return QStringLiteral("sslmode=%1;connect_timeout=%2").arg(tlsModeName(server.tls)).arg(server.connectTimeout);
}

QString tlsModeName(TlsMode mode)
{
    for (const auto &[value, name] : tlsNames) {
        if (value == mode)
            return QString::fromLatin1(name);
    }
    return QStringLiteral("prefer");
}

std::optional<TlsMode> tlsModeNamed(const QString &name)
{
    for (const auto &[value, text] : tlsNames) {
        if (name == QLatin1String(text))
            return value;
    }
    return std::nullopt;
}

} // namespace tavrix
