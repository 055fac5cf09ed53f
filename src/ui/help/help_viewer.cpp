#include "ui/help/help_viewer.h"

#include <QDir>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QTextCursor>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

namespace tavrix {

namespace {

template <typename T>
T *named(T *widget, const char *name)
{
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

// The pages are plain HTML; texts the program says stand out a little.
const char *const pageStyle = ".said { font-style: italic; color: #3a3a3a; } code { color: #4e2a5c; } h1, h2 { color: #1b4d2e; }";

} // namespace

HelpViewer::HelpViewer(QString folder, QList<HelpPage> pages, QWidget *owner)
    : QWidget(owner, Qt::Window)
    , folder_(std::move(folder))
    , pages_(std::move(pages))
{
    setObjectName(QStringLiteral("HelpViewer"));
    setWindowTitle(QStringLiteral("Tavrix! Help"));

    page_ = named(new QTextBrowser(this), "helpPage");
    page_->setSearchPaths({folder_});
    page_->setOpenExternalLinks(true);
    page_->document()->setDefaultStyleSheet(QString::fromLatin1(pageStyle));
    connect(page_, &QTextBrowser::sourceChanged, this, &HelpViewer::pageChanged);

    back_ = named(new QPushButton(QStringLiteral("Back"), this), "helpBack");
    forward_ = named(new QPushButton(QStringLiteral("Forward"), this), "helpForward");
    home_ = named(new QPushButton(QStringLiteral("Contents"), this), "helpHome");
    back_->setShortcut(QKeySequence(QKeySequence::Back));
    forward_->setShortcut(QKeySequence(QKeySequence::Forward));
    for (QPushButton *button : {back_, forward_}) {
        button->setEnabled(false);
        button->setAutoDefault(false);
    }
    connect(back_, &QPushButton::clicked, page_, &QTextBrowser::backward);
    connect(forward_, &QPushButton::clicked, page_, &QTextBrowser::forward);
    connect(page_, &QTextBrowser::backwardAvailable, back_, &QPushButton::setEnabled);
    connect(page_, &QTextBrowser::forwardAvailable, forward_, &QPushButton::setEnabled);
    connect(home_, &QPushButton::clicked, this, [this] { showPage(QString::fromLatin1(helpContentsPage)); });

    auto *pagePanel = new QWidget(this);
    auto *pageLayout = new QVBoxLayout(pagePanel);
    pageLayout->setContentsMargins(0, 0, 0, 0);
    auto *buttons = new QHBoxLayout;
    for (QPushButton *button : {back_, forward_, home_})
        buttons->addWidget(button);
    buttons->addStretch();
    pageLayout->addLayout(buttons);
    pageLayout->addWidget(page_, 1);

    auto *splitter = new QSplitter(Qt::Horizontal, this);
    splitter->addWidget(buildSidePanel());
    splitter->addWidget(pagePanel);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({240, 640});
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(splitter);

    // Escape closes the help; F1 in here goes back to the contents; Ctrl+F
    // to the search box.
    auto *closeKey = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(closeKey, &QShortcut::activated, this, &QWidget::close);
    auto *contentsKey = new QShortcut(QKeySequence::HelpContents, this);
    connect(contentsKey, &QShortcut::activated, home_, &QPushButton::click);
    auto *findKey = new QShortcut(QKeySequence::Find, this);
    connect(findKey, &QShortcut::activated, this, [this] {
        search_->setFocus(Qt::ShortcutFocusReason);
        search_->selectAll();
    });
    resize(900, 680);
}

QWidget *HelpViewer::buildSidePanel()
{
    auto *panel = new QWidget(this);
    auto *layout = new QVBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);

    contents_ = named(new QListWidget(panel), "helpContents");
    for (const HelpPage &page : std::as_const(pages_))
        contents_->addItem(page.title);
    connect(contents_, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0 && row < pages_.size())
            showPage(pages_[row].fileName);
    });
    layout->addWidget(contents_, 3);

    auto *searchLabel = new QLabel(QStringLiteral("Search:"), panel);
    search_ = named(new QLineEdit(panel), "helpSearch");
    search_->setPlaceholderText(QStringLiteral("Words to find"));
    search_->setClearButtonEnabled(true);
    searchLabel->setBuddy(search_);
    results_ = named(new QListWidget(panel), "helpResults");
    connect(search_, &QLineEdit::textChanged, this, &HelpViewer::search);
    connect(search_, &QLineEdit::returnPressed, this, [this] { openResult(results_->item(0)); });
    connect(results_, &QListWidget::itemClicked, this, &HelpViewer::openResult);
    connect(results_, &QListWidget::itemActivated, this, &HelpViewer::openResult);
    layout->addWidget(searchLabel);
    layout->addWidget(search_);
    layout->addWidget(results_, 2);
    return panel;
}

void HelpViewer::showPage(const QString &page)
{
    const qsizetype hash = page.indexOf(QLatin1Char('#'));
    QUrl url = QUrl::fromLocalFile(QDir(folder_).filePath(hash < 0 ? page : page.left(hash)));
    if (hash >= 0)
        url.setFragment(page.mid(hash + 1));
    if (url != page_->source())
        page_->setSource(url);
    if (!placed_)
        placeBesideOwner();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

// The first time, the window goes beside the main window if the screen has
// room, else against the screen's right edge; always whole on the screen.
void HelpViewer::placeBesideOwner()
{
    placed_ = true;
    const QWidget *owner = parentWidget();
    const QScreen *screen = owner ? owner->screen() : this->screen();
    if (!owner || !screen)
        return;
    const QRect room = screen->availableGeometry();
    resize(size().boundedTo(room.size() * 0.9));
    const QRect main = owner->frameGeometry();
    const int frame = frameGeometry().width() - width();
    int x = main.right() + 1;
    if (x + width() + frame > room.right() + 1)
        x = room.right() + 1 - width() - frame;
    const int y = std::clamp(main.top(), room.top(), std::max(room.top(), room.bottom() - height() - 40));
    move(std::max(x, room.left()), y);
}

QString HelpViewer::currentPage() const
{
    return page_->source().fileName();
}

// The contents list follows the page, however it was reached.
void HelpViewer::pageChanged(const QUrl &source)
{
    int row = -1;
    for (int i = 0; i < pages_.size(); ++i) {
        if (pages_[i].fileName == source.fileName())
            row = i;
    }
    const QSignalBlocker quiet(contents_);
    contents_->setCurrentRow(row);
}

void HelpViewer::search(const QString &words)
{
    results_->clear();
    const QList<int> found = searchHelpPages(pages_, words);
    for (int index : found) {
        auto *item = new QListWidgetItem(pages_[index].title, results_);
        item->setData(Qt::UserRole, pages_[index].fileName);
    }
    if (found.isEmpty() && !words.trimmed().isEmpty()) {
        auto *none = new QListWidgetItem(QStringLiteral("No page holds these words."), results_);
        none->setFlags(Qt::NoItemFlags);
    }
}

// Opens a found page at the first place one of the words occurs.
void HelpViewer::openResult(QListWidgetItem *item)
{
    const QString page = item ? item->data(Qt::UserRole).toString() : QString();
    if (page.isEmpty())
        return;
    showPage(page);
    const QString firstWord =
        search_->text().split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts).value(0);
    page_->moveCursor(QTextCursor::Start);
    if (!firstWord.isEmpty())
        page_->find(firstWord);
}

} // namespace tavrix
