#include "core/help/help_pages.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>

namespace tavrix {

namespace {

const QString contentsPage = QString::fromLatin1(helpContentsPage);

QString readPage(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll());
}

QString decodeEntities(const QString &text)
{
    static const QRegularExpression entity(QStringLiteral("&(#x[0-9a-fA-F]+|#[0-9]+|[a-zA-Z]+);"));
    static const QList<std::pair<QString, QString>> named = {
        {QStringLiteral("amp"), QStringLiteral("&")},     {QStringLiteral("lt"), QStringLiteral("<")},
        {QStringLiteral("gt"), QStringLiteral(">")},      {QStringLiteral("quot"), QStringLiteral("\"")},
        {QStringLiteral("apos"), QStringLiteral("'")},    {QStringLiteral("nbsp"), QStringLiteral(" ")},
        {QStringLiteral("ndash"), QString(QChar(0x2013))}, {QStringLiteral("mdash"), QString(QChar(0x2014))}};
    QString out;
    qsizetype from = 0;
    for (auto it = entity.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        out += text.mid(from, match.capturedStart() - from);
        from = match.capturedEnd();
        const QString name = match.captured(1);
        QString decoded = match.captured(0);
        if (name.startsWith(QLatin1Char('#'))) {
            const bool hex = name.startsWith(QLatin1String("#x"));
            bool ok = false;
            const char32_t code = name.mid(hex ? 2 : 1).toUInt(&ok, hex ? 16 : 10);
            if (ok && code > 0 && code <= 0x10FFFF)
                decoded = QString::fromUcs4(&code, 1);
        } else {
            for (const auto &[key, value] : named) {
                if (key == name)
                    decoded = value;
            }
        }
        out += decoded;
    }
    return out + text.mid(from);
}

// The file names of the local pages a page links to, in order, without
// anchors; each once.
QStringList linkedPages(const QString &html)
{
    static const QRegularExpression href(QStringLiteral("href\\s*=\\s*\"([^\"#:]+)(#[^\"]*)?\""),
                                         QRegularExpression::CaseInsensitiveOption);
    QStringList pages;
    for (auto it = href.globalMatch(html); it.hasNext();) {
        const QString page = it.next().captured(1);
        if (!pages.contains(page))
            pages.append(page);
    }
    return pages;
}

} // namespace

QString helpPlainText(const QString &html)
{
    static const QRegularExpression head(QStringLiteral("<head\\b.*</head>|<!--.*-->"),
                                         QRegularExpression::CaseInsensitiveOption
                                             | QRegularExpression::DotMatchesEverythingOption
                                             | QRegularExpression::InvertedGreedinessOption);
    static const QRegularExpression tag(QStringLiteral("<[^>]*>"));
    QString text = html;
    text.remove(head);
    text.replace(tag, QStringLiteral(" "));
    return decodeEntities(text).simplified();
}

QString helpTitle(const QString &html)
{
    static const QRegularExpression title(QStringLiteral("<title>(.*)</title>"),
                                          QRegularExpression::CaseInsensitiveOption
                                              | QRegularExpression::DotMatchesEverythingOption
                                              | QRegularExpression::InvertedGreedinessOption);
    const QRegularExpressionMatch match = title.match(html);
    return match.hasMatch() ? decodeEntities(match.captured(1)).simplified() : QString();
}

QList<HelpPage> loadHelpPages(const QString &folder)
{
    const QDir dir(folder);
    if (folder.isEmpty() || !QFileInfo(dir.filePath(contentsPage)).isFile())
        return {};
    QStringList order{contentsPage};
    const QString contents = readPage(dir.filePath(contentsPage));
    for (const QString &page : linkedPages(contents)) {
        if (!order.contains(page) && QFileInfo(dir.filePath(page)).isFile())
            order.append(page);
    }
    const QStringList all = dir.entryList({QStringLiteral("*.html")}, QDir::Files, QDir::Name);
    for (const QString &page : all) {
        if (!order.contains(page))
            order.append(page);
    }
    QList<HelpPage> pages;
    for (const QString &name : std::as_const(order)) {
        const QString html = name == contentsPage ? contents : readPage(dir.filePath(name));
        const QString title = helpTitle(html);
        pages.append({name, title.isEmpty() ? name : title, helpPlainText(html)});
    }
    return pages;
}

QList<int> searchHelpPages(const QList<HelpPage> &pages, const QString &words)
{
    const QStringList wanted = words.split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
    if (wanted.isEmpty())
        return {};
    struct Found {
        int index;
        bool inTitle;
        qsizetype count;
    };
    QList<Found> found;
    for (int i = 0; i < pages.size(); ++i) {
        Found page{i, false, 0};
        for (const QString &word : wanted) {
            const qsizetype inTitle = pages[i].title.count(word, Qt::CaseInsensitive);
            const qsizetype inText = pages[i].text.count(word, Qt::CaseInsensitive);
            if (inTitle + inText == 0) {
                page.count = 0;
                break;
            }
            page.inTitle = page.inTitle || inTitle > 0;
            page.count += inTitle + inText;
        }
        if (page.count > 0)
            found.append(page);
    }
    std::stable_sort(found.begin(), found.end(), [](const Found &a, const Found &b) {
        return a.inTitle != b.inTitle ? a.inTitle : a.count > b.count;
    });
    QList<int> indices;
    for (const Found &page : std::as_const(found))
        indices.append(page.index);
    return indices;
}

QString helpMissingMessage(const QStringList &places)
{
    QStringList shown;
    for (const QString &place : places)
        shown.append(QDir::toNativeSeparators(place));
    return QStringLiteral("The help pages were not found. Tavrix looked for %1 in:\r\n%2\r\n\r\n"
                          "Install Tavrix again, or build it again, to bring them back.")
        .arg(contentsPage, shown.join(QStringLiteral("\r\n")));
}

} // namespace tavrix
