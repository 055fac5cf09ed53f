#pragma once

// The program's help: a window of its own beside the main window, with the
// list of pages, the page itself with its links, Back and Forward, and a
// search for the pages that hold the words typed.

#include "core/help/help_pages.h"

#include <QWidget>

class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;
class QTextBrowser;
class QUrl;

namespace tavrix {

class HelpViewer : public QWidget {
    Q_OBJECT

public:
    // `pages` are those of `folder` (loadHelpPages, not empty). The viewer is
    // a window of its own that `owner` keeps and takes down with it.
    HelpViewer(QString folder, QList<HelpPage> pages, QWidget *owner);

    // Shows a page of the folder ("network.html", or "play.html#end" for a
    // place in it) and brings the window up.
    void showPage(const QString &page);
    // The file name of the page shown.
    QString currentPage() const;

private:
    QWidget *buildSidePanel();
    void placeBesideOwner();
    void pageChanged(const QUrl &source);
    void search(const QString &words);
    void openResult(QListWidgetItem *item);

    QString folder_;
    QList<HelpPage> pages_;
    QListWidget *contents_ = nullptr;
    QLineEdit *search_ = nullptr;
    QListWidget *results_ = nullptr;
    QTextBrowser *page_ = nullptr;
    QPushButton *back_ = nullptr;
    QPushButton *forward_ = nullptr;
    QPushButton *home_ = nullptr;
    bool placed_ = false;
};

} // namespace tavrix
