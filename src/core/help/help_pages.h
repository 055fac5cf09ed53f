#pragma once

// The help pages that travel with the program: which pages there are, in the
// order of the contents, with their titles and words, so that the help viewer
// can list them and find the pages that hold what the user typed.

#include <QList>
#include <QString>
#include <QStringList>

namespace tavrix {

// The contents page of a help folder; every other page is reached from it.
inline constexpr const char *helpContentsPage = "index.html";

struct HelpPage {
    QString fileName; // within the help folder
    QString title;    // the page's title, or its file name when it has none
    QString text;     // the words of its body, markup and entities resolved
};

// The pages of a help folder: the contents page first, then the pages it
// links to in the order of its links, then any other pages by file name.
// None when the folder holds no contents page.
QList<HelpPage> loadHelpPages(const QString &folder);

// The pages that hold every word of `words`, ignoring case, as positions in
// `pages`: those with a word in their title first, then by how often the
// words occur, ties in the order of `pages`. None when no word is typed.
QList<int> searchHelpPages(const QList<HelpPage> &pages, const QString &words);

// What to tell the user when no help pages were found in any of the folders
// `places`.
QString helpMissingMessage(const QStringList &places);

// The text of an HTML page: its body without markup, entities decoded,
// blanks collapsed.
QString helpPlainText(const QString &html);
// The text of its title element; "" when it has none.
QString helpTitle(const QString &html);

} // namespace tavrix
