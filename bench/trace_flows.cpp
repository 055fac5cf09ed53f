// Plays seeded, scripted flows through the whole program, as a user would:
// games against the computer at every level, two people at one board, practice
// sets and sequences, review of the recorded darts, and a network game between
// two copies of the program over 127.0.0.1. After every step it prints what a
// user can see (every named control of each copy, every message and sound) and
// what the database holds, each as the lines that changed. Two builds whose
// outputs are byte for byte the same behave the same.
//
//   QT_QPA_PLATFORM=offscreen trace_flows OUTFILE
//
// The program is driven only through its start-up class, its windows'
// controls (by objectName), the board picture and its own database file, so
// that the same source runs against any arrangement of the program's code.

#if __has_include("ui/startup/program.h")
#include "ui/startup/program.h"
#else
#include "startup/program.h"
#endif
#if __has_include("ui/startup/darts_window.h")
#include "ui/startup/darts_window.h"
#else
#include "startup/darts_window.h"
#endif
#if __has_include("ui/dialogs/messages.h")
#include "ui/dialogs/messages.h"
#else
#include "dialogs/messages.h"
#endif
#if __has_include("ui/sound/sounds.h")
#include "ui/sound/sounds.h"
#else
#include "sound/sounds.h"
#endif
#if __has_include("ui/board/dart_marker.h")
#include "ui/board/dart_marker.h"
#else
#include "board/dart_marker.h"
#endif

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMainWindow>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSettings>
#include <QSlider>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace {

constexpr double pi = 3.14159265358979323846;

// --- Output --------------------------------------------------------------------

QString escaped(QString text)
{
    text.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    text.replace(QLatin1Char('\r'), QStringLiteral("\\r"));
    text.replace(QLatin1Char('\n'), QStringLiteral("\\n"));
    text.replace(QLatin1Char('\t'), QStringLiteral("\\t"));
    return text;
}

QString shortHash(const QByteArray &bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Md5).toHex().left(16));
}

// What the run did, for the summary at the end.
struct Counts {
    int games = 0;
    int darts = 0;
    int sets = 0;
    int practiceSets = 0;
    int reviewAreas = 0;
    int networkSteps = 0;
    int chatLines = 0;
    int timeouts = 0;
    int surprises = 0;
};
Counts counts;

class Output {
public:
    bool open(const QString &path)
    {
        file_ = std::fopen(QFile::encodeName(path).constData(), "wb");
        return file_ != nullptr;
    }
    ~Output()
    {
        if (file_)
            std::fclose(file_);
    }
    // What differs between runs by nature: the homes' folders and the port.
    void addHome(const QString &path) { homes_.append(path); }
    void setPort(quint16 port)
    {
        port_ = QRegularExpression(QStringLiteral("(?<![0-9.])%1(?![0-9.])").arg(port));
    }
    void line(QString text)
    {
        for (const QString &home : std::as_const(homes_))
            text.replace(home, QStringLiteral("<HOME>"));
        if (port_.isValid() && !port_.pattern().isEmpty())
            text.replace(port_, QStringLiteral("<PORT>"));
        const QByteArray bytes = text.toUtf8() + '\n';
        std::fwrite(bytes.constData(), 1, size_t(bytes.size()), file_);
        ++lines_;
    }
    int lines() const { return lines_; }

private:
    std::FILE *file_ = nullptr;
    QStringList homes_;
    QRegularExpression port_;
    int lines_ = 0;
};
Output out;

// A point in board units (x right, y up from the bull) as a picture pixel.
QPoint pixelOf(QPoint board)
{
    return {260 + board.x(), 260 - board.y()};
}

// --- One copy of the program -----------------------------------------------------

class Copy;
std::vector<Copy *> copies;
// The picture of the board is printed as a hash while darts are plotted on it.
bool hashBoardPicture = false;

QString className(const QObject *object)
{
    const QString name = QString::fromLatin1(object->metaObject()->className());
    return name.mid(name.lastIndexOf(QLatin1Char(':')) + 1);
}

// The lines a control shows: its class and whether it is shown and enabled,
// then what it holds.
void describe(QWidget *w, const QString &key, std::map<QString, QString> &state)
{
    QWidget *window = w->window();
    const bool shown = w == window ? w->isVisible() : w->isVisibleTo(window);
    state[key] = className(w) + (shown ? QStringLiteral(" shown") : QStringLiteral(" hidden"))
                 + (w->isEnabled() ? QStringLiteral(" enabled") : QStringLiteral(" disabled"));
    if (w == window)
        state[key + QStringLiteral(".title")] = escaped(w->windowTitle());
    if (!w->styleSheet().isEmpty())
        state[key + QStringLiteral(".style")] = escaped(w->styleSheet());
    if (hashBoardPicture && w->objectName() == QLatin1String("Picture1")) {
        const QImage image = w->grab().toImage().convertToFormat(QImage::Format_ARGB32);
        state[key + QStringLiteral(".image")] =
            shortHash(QByteArray(reinterpret_cast<const char *>(image.constBits()), image.sizeInBytes()));
    }
    if (const auto *marker = qobject_cast<tavrix::DartMarker *>(w)) {
        state[key + QStringLiteral(".marker")] = QStringLiteral("%1,%2 %3x%4 flight %5 %6")
                                                     .arg(marker->x())
                                                     .arg(marker->y())
                                                     .arg(marker->width())
                                                     .arg(marker->height())
                                                     .arg(marker->flight())
                                                     .arg(marker->tag());
        return;
    }
    if (const auto *label = qobject_cast<QLabel *>(w)) {
        state[key + QStringLiteral(".text")] = escaped(label->text());
        const QPixmap pixmap = label->pixmap();
        if (!pixmap.isNull()) {
            const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
            state[key + QStringLiteral(".pixmap")] =
                QStringLiteral("%1x%2 ").arg(image.width()).arg(image.height())
                + shortHash(QByteArray(reinterpret_cast<const char *>(image.constBits()), image.sizeInBytes()));
        }
        if (label->testAttribute(Qt::WA_SetPalette))
            state[key + QStringLiteral(".palette")] = label->palette().color(QPalette::Window).name() + QLatin1Char('/')
                                                       + label->palette().color(QPalette::WindowText).name();
        if (label->testAttribute(Qt::WA_SetFont)) {
            const QFont font = label->font();
            state[key + QStringLiteral(".font")] = QStringLiteral("bold %1 italic %2 strike %3")
                                                       .arg(int(font.bold()))
                                                       .arg(int(font.italic()))
                                                       .arg(int(font.strikeOut()));
        }
    } else if (const auto *button = qobject_cast<QAbstractButton *>(w)) {
        state[key + QStringLiteral(".text")] = escaped(button->text());
        if (button->isCheckable())
            state[key + QStringLiteral(".checked")] = QString::number(int(button->isChecked()));
    } else if (const auto *box = qobject_cast<QGroupBox *>(w)) {
        state[key + QStringLiteral(".title")] = escaped(box->title());
    } else if (const auto *combo = qobject_cast<QComboBox *>(w)) {
        state[key + QStringLiteral(".index")] =
            QStringLiteral("%1 of %2 ").arg(combo->currentIndex()).arg(combo->count()) + escaped(combo->currentText());
    } else if (const auto *line = qobject_cast<QLineEdit *>(w)) {
        state[key + QStringLiteral(".text")] = escaped(line->text());
    } else if (const auto *plain = qobject_cast<QPlainTextEdit *>(w)) {
        state[key + QStringLiteral(".text")] = escaped(plain->toPlainText());
    } else if (const auto *rich = qobject_cast<QTextEdit *>(w)) {
        state[key + QStringLiteral(".text")] = escaped(rich->toPlainText());
    } else if (const auto *slider = qobject_cast<QSlider *>(w)) {
        state[key + QStringLiteral(".value")] = QString::number(slider->value());
    }
}

// Every named control of a main window and of its dialogs that are up, and
// every named menu entry.
std::map<QString, QString> snapshot(QWidget *main)
{
    std::map<QString, QString> state;
    if (!main)
        return state;
    state[QStringLiteral("window.title")] = escaped(main->windowTitle());
    state[QStringLiteral("window.visible")] = QString::number(int(main->isVisible()));
    std::vector<std::pair<QString, QWidget *>> named;
    std::map<QString, int> uses;
    for (QWidget *w : main->findChildren<QWidget *>()) {
        const QString name = w->objectName();
        if (name.isEmpty() || name.startsWith(QLatin1String("qt_")))
            continue;
        QWidget *window = w->window();
        if (window != main && !window->isVisible())
            continue;
        QString key = name;
        if (window != main && window != w)
            key = (window->objectName().isEmpty() ? className(window) : window->objectName()) + QLatin1Char('/') + name;
        named.emplace_back(key, w);
        ++uses[key];
    }
    std::map<QString, int> again;
    for (auto &[key, w] : named) {
        if (uses[key] > 1) {
            const QString typed = key + QLatin1Char('#') + className(w);
            key = typed + QLatin1Char('#') + QString::number(again[typed]++);
        }
        describe(w, key, state);
    }
    for (QAction *action : main->findChildren<QAction *>()) {
        if (action->objectName().isEmpty())
            continue;
        state[QStringLiteral("action ") + action->objectName()] =
            escaped(action->text()) + (action->isEnabled() ? QStringLiteral(" enabled") : QStringLiteral(" disabled"))
            + (action->isCheckable() ? (action->isChecked() ? QStringLiteral(" checked") : QStringLiteral(" unchecked"))
                                     : QString())
            + (action->isVisible() ? QString() : QStringLiteral(" invisible"));
    }
    return state;
}

void printStates(bool full = false);

class Copy final : public tavrix::Messages, public tavrix::SoundPlayer {
public:
    Copy(QString name, QString home)
        : name(std::move(name))
        , home(std::move(home))
        , dbPath(QDir(this->home).filePath(QStringLiteral("tavrix.db")))
    {
        copies.push_back(this);
    }
    ~Copy() override
    {
        stop();
        closeReader();
        copies.erase(std::find(copies.begin(), copies.end(), this));
    }

    const QString name;
    const QString home;
    const QString dbPath;
    std::unique_ptr<tavrix::Program> program;
    // Answers to the questions to come; Yes when none is left.
    QList<bool> answers;
    // Every message shown, as "kind|title|text".
    QStringList said;
    // What was printed last.
    std::map<QString, QString> shown;

    // The player, once there is one.
    QString player;

    // Starts the program in this copy's home, its generator seeded and the
    // other side's darts shown without the pause between them.
    bool start()
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, home);
        program = std::make_unique<tavrix::Program>(*this, dbPath, this);
        if (!program->Main())
            return false;
        // The window seeds the generator from the clock.
        program->session().random.seed(7);
        speedUpTimers();
        return true;
    }
    void stop()
    {
        program.reset();
        shown.clear();
    }
    QMainWindow *window() const { return program ? program->window() : nullptr; }
    void speedUpTimers()
    {
        for (QTimer *timer : window()->findChildren<QTimer *>(QStringLiteral("ThrowTimer")))
            timer->setInterval(0);
    }
    bool busy() const
    {
        if (!window())
            return false;
        for (QTimer *timer : window()->findChildren<QTimer *>(QStringLiteral("ThrowTimer"))) {
            if (timer->isActive())
                return true;
        }
        return false;
    }

    template <typename T>
    T *find(const char *name) const
    {
        T *found = window()->findChild<T *>(QString::fromLatin1(name));
        if (!found) {
            ++counts.surprises;
            out.line(this->name + QStringLiteral(" NO CONTROL ") + QLatin1String(name));
            qFatal("no control %s", name);
        }
        return found;
    }
    // A control of one of this copy's dialogs.
    template <typename T>
    T *inDialog(const char *dialog, const char *name) const
    {
        return find<QWidget>(dialog)->findChild<T *>(QString::fromLatin1(name));
    }
    QPushButton *mainButton() const { return find<QPushButton>("btnStartGame"); }
    QWidget *picture() const { return find<QWidget>("Picture1"); }
    QString text(const char *label) const { return find<QLabel>(label)->text(); }
    tavrix::DartMarker *marker(const QString &name) const
    {
        return window()->findChild<tavrix::DartMarker *>(name);
    }
    bool markerShown(const QString &name) const
    {
        const tavrix::DartMarker *m = marker(name);
        return m && m->isVisibleTo(window());
    }
    // Where the program advises the dart `index` of a set to go: the centre
    // of its target marker, in board units.
    QPointF advice(int index) const
    {
        const tavrix::DartMarker *target = marker(QStringLiteral("TargetPips_%1").arg(index));
        if (!target)
            return {};
        return {target->x() + target->width() / 2.0 - 260, 260 - (target->y() + target->height() / 2.0)};
    }

    // --- Messages, logged as they are shown ---
    void notice(QWidget *, const QString &title, const QString &text) override
    {
        message(QStringLiteral("notice"), title, text);
    }
    bool askYesNo(QWidget *, const QString &title, const QString &text) override
    {
        const bool yes = answers.isEmpty() || answers.takeFirst();
        message(QStringLiteral("question"), title, text + (yes ? QStringLiteral(" -> Yes") : QStringLiteral(" -> No")));
        return yes;
    }
    void error(QWidget *, const QString &title, const QString &text) override
    {
        message(QStringLiteral("error"), title, text);
    }
    // A choice takes its last button, which gives up what is asked about,
    // so a trace never waits in a question asked again.
    int choose(QWidget *, const QString &title, const QString &text, const QStringList &buttons, int) override
    {
        message(QStringLiteral("choice"), title, text + QStringLiteral(" -> ") + buttons.last());
        return static_cast<int>(buttons.size()) - 1;
    }
    QString chooseFileToSave(QWidget *, const QString &title, const QString &, const QString &) override
    {
        message(QStringLiteral("save file"), title, QStringLiteral("cancelled"));
        return {};
    }
    QString chooseFileToOpen(QWidget *, const QString &title, const QString &, const QString &) override
    {
        message(QStringLiteral("open file"), title, QStringLiteral("cancelled"));
        return {};
    }
    void alert(const QString &text, const QString &title) override { message(QStringLiteral("alert"), title, text); }
    void hideAlert() override { out.line(name + QStringLiteral(" MSG hideAlert")); }

    // --- Sounds: a sound the program waits for is a dart landing ---
    void playSound(const QString &file, bool wait) override
    {
        out.line(name + QStringLiteral(" SOUND ") + QFileInfo(file).fileName()
                 + (wait ? QStringLiteral(" wait") : QStringLiteral(" nowait")));
        if (wait)
            printStates();
    }

    // --- The database, read by a connection of its own ---
    void printDatabase();

private:
    void message(const QString &kind, const QString &title, const QString &text)
    {
        said.append(kind + QLatin1Char('|') + title + QLatin1Char('|') + text);
        out.line(name + QStringLiteral(" MSG ") + kind + QLatin1Char(' ') + escaped(title) + QStringLiteral(" | ")
                 + escaped(text));
    }
    void closeReader()
    {
        if (reader_.isEmpty())
            return;
        QSqlDatabase::database(reader_, false).close();
        QSqlDatabase::removeDatabase(reader_);
        reader_.clear();
    }

    QString reader_;
    qint64 dataVersion_ = -1;
    // Table, rowid, the row as printed.
    std::map<QString, std::map<qint64, QString>> rows_;
};

QString valueText(const QVariant &value)
{
    if (value.isNull())
        return QStringLiteral("NULL");
    switch (value.typeId()) {
    case QMetaType::Double:
        return QString::number(value.toDouble(), 'g', 17);
    case QMetaType::QString:
        return QLatin1Char('"') + escaped(value.toString()) + QLatin1Char('"');
    case QMetaType::QByteArray:
        return QStringLiteral("x'") + QString::fromLatin1(value.toByteArray().toHex()) + QLatin1Char('\'');
    default:
        return value.toString();
    }
}

void Copy::printDatabase()
{
    if (!QFile::exists(dbPath))
        return;
    if (reader_.isEmpty()) {
        static int made = 0;
        reader_ = QStringLiteral("trace-reader-%1").arg(++made);
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), reader_);
        db.setDatabaseName(dbPath);
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        if (!db.open()) {
            out.line(name + QStringLiteral(" DB cannot be read: ") + db.lastError().text());
            return;
        }
    }
    const QSqlDatabase db = QSqlDatabase::database(reader_, false);
    {
        // Only another connection's commit changes the data version.
        QSqlQuery version(db);
        if (!version.exec(QStringLiteral("PRAGMA data_version")) || !version.next())
            return;
        const qint64 now = version.value(0).toLongLong();
        if (now == dataVersion_)
            return;
        dataVersion_ = now;
    }
    QStringList tables;
    {
        QSqlQuery query(db);
        query.exec(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name"));
        while (query.next())
            tables << query.value(0).toString();
    }
    std::map<QString, std::map<qint64, QString>> rows;
    for (const QString &table : std::as_const(tables)) {
        std::map<qint64, QString> &now = rows[table];
        QSqlQuery query(db);
        query.setForwardOnly(true);
        if (!query.exec(QStringLiteral("SELECT rowid, * FROM \"%1\" ORDER BY rowid").arg(table))) {
            out.line(name + QStringLiteral(" DB ") + table + QStringLiteral(": ") + query.lastError().text());
            continue;
        }
        const QSqlRecord record = query.record();
        if (table == QLatin1String("outchart")) {
            // The checkout chart is large and rarely changes: a count and a hash.
            QByteArray all;
            int count = 0;
            while (query.next()) {
                ++count;
                for (int i = 1; i < record.count(); ++i)
                    all += valueText(query.value(i)).toUtf8() + '|';
                all += '\n';
            }
            now[0] = QStringLiteral(" rows=%1 hash=").arg(count) + shortHash(all);
            continue;
        }
        QList<int> columns;
        for (int i = 1; i < record.count(); ++i) {
            if (record.fieldName(i).compare(QLatin1String("creationdate"), Qt::CaseInsensitive) != 0)
                columns << i;
        }
        while (query.next()) {
            QString text;
            for (int i : std::as_const(columns))
                text += QLatin1Char(' ') + record.fieldName(i) + QLatin1Char('=') + valueText(query.value(i));
            now[query.value(0).toLongLong()] = text;
        }
    }
    std::map<QString, int> tableNames;
    for (const auto &[table, r] : rows_)
        tableNames[table] = 0;
    for (const auto &[table, r] : rows)
        tableNames[table] = 0;
    for (const auto &[table, unused] : tableNames) {
        const std::map<qint64, QString> &before = rows_[table];
        const std::map<qint64, QString> &after = rows[table];
        auto b = before.begin();
        auto a = after.begin();
        const QString head = name + QStringLiteral(" DB ") + table;
        while (b != before.end() || a != after.end()) {
            if (a == after.end() || (b != before.end() && b->first < a->first)) {
                out.line(head + QStringLiteral(" -[%1]").arg(b->first) + b->second);
                ++b;
            } else if (b == before.end() || a->first < b->first) {
                out.line(head + QStringLiteral(" +[%1]").arg(a->first) + a->second);
                ++a;
            } else {
                if (a->second != b->second)
                    out.line(head + QStringLiteral(" ~[%1]").arg(a->first) + a->second);
                ++a;
                ++b;
            }
        }
    }
    rows_ = std::move(rows);
}

// Windows up that belong to no copy's main window, with their controls.
std::map<QString, QString> strayWindows()
{
    std::map<QString, QString> state;
    for (QWidget *top : QApplication::topLevelWidgets()) {
        if (!top->isVisible() || top->objectName().isEmpty() || top->objectName().startsWith(QLatin1String("qt")))
            continue;
        bool owned = false;
        for (const QWidget *up = top; up && !owned; up = up->parentWidget()) {
            for (const Copy *copy : copies)
                owned |= copy->program && up == copy->window();
        }
        if (owned)
            continue;
        describe(top, top->objectName(), state);
        for (QWidget *w : top->findChildren<QWidget *>()) {
            if (!w->objectName().isEmpty() && !w->objectName().startsWith(QLatin1String("qt_")) && w->window() == top)
                describe(w, top->objectName() + QLatin1Char('/') + w->objectName(), state);
        }
    }
    return state;
}

void printChanges(const QString &prefix, std::map<QString, QString> now, std::map<QString, QString> &shown, bool full)
{
    for (const auto &[key, value] : now) {
        const auto before = shown.find(key);
        if (full || before == shown.end() || before->second != value)
            out.line(prefix + QLatin1Char(' ') + key + QStringLiteral(" = ") + value);
    }
    for (const auto &[key, value] : shown) {
        if (!now.count(key))
            out.line(prefix + QLatin1Char(' ') + key + QStringLiteral(" = <gone>"));
    }
    shown = std::move(now);
}

// Lines of every copy that changed since they were printed, or all of them.
void printStates(bool full)
{
    for (Copy *copy : copies) {
        if (copy->program)
            printChanges(copy->name, snapshot(copy->window()), copy->shown, full);
    }
    static std::map<QString, QString> strays;
    printChanges(QStringLiteral("*"), strayWindows(), strays, full);
}

// --- Steps and waiting ----------------------------------------------------------

QString flowName;
int flowNumber = 0;
bool flowStarting = false;

// The generator of the darts the people at the board throw, seeded afresh
// for each flow so that a difference stays in the flow where it arises.
QRandomGenerator dartRandom;

// Every copy's generator afresh, for the flow under way.
void seedCopies()
{
    for (Copy *copy : copies) {
        if (copy->program)
            copy->program->session().random.seed(quint32(100 * flowNumber + copy->name.at(0).unicode()));
    }
}

void beginFlow(const QString &name)
{
    flowName = name;
    flowStarting = true;
    ++flowNumber;
    dartRandom.seed(quint32(1000 + flowNumber));
    seedCopies();
}

void step(const QString &name)
{
    out.line(QStringLiteral("== ") + flowName + QLatin1Char('/') + name);
    printStates(flowStarting);
    flowStarting = false;
    for (Copy *copy : copies)
        copy->printDatabase();
}

bool waitFor(const std::function<bool()> &done, const QString &what, int timeoutMs = 30000)
{
    QElapsedTimer clock;
    clock.start();
    // Wakes the event loop now and then, so that the condition is checked.
    QTimer wake;
    wake.start(5);
    while (!done()) {
        if (clock.elapsed() > timeoutMs) {
            ++counts.timeouts;
            out.line(QStringLiteral("TIMEOUT ") + what);
            std::fprintf(stderr, "timeout in %s: %s\n", qPrintable(flowName), qPrintable(what));
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

// Until no copy has a dart in the air, then what is left in the queue.
void settle()
{
    waitFor([] {
        for (Copy *copy : copies) {
            if (copy->busy())
                return false;
        }
        return true;
    }, QStringLiteral("darts in the air"));
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void surprise(const Copy &copy, const QString &what)
{
    ++counts.surprises;
    out.line(copy.name + QStringLiteral(" SURPRISE ") + escaped(what));
    std::fprintf(stderr, "surprise in %s: %s\n", qPrintable(flowName), qPrintable(what));
}

// Clicks a button that must show `caption` (any caption when empty).
void press(Copy &copy, QAbstractButton *button, const QString &caption = {})
{
    if ((!caption.isEmpty() && button->text() != caption) || !button->isEnabled())
        surprise(copy, QStringLiteral("%1 shows \"%2\"%3 where \"%4\" was to be clicked")
                           .arg(button->objectName(), button->text(),
                                button->isEnabled() ? QString() : QStringLiteral(" disabled"), caption));
    // A real click, unless a modal window of another copy holds the input.
    if (QApplication::activeModalWidget() || !button->isVisible())
        button->click();
    else
        QTest::mouseClick(button, Qt::LeftButton);
}

void pressMain(Copy &copy, const QString &caption)
{
    press(copy, copy.mainButton(), caption);
}

// A key on the main window, which must be the active one for its shortcuts.
void key(Copy &copy, Qt::Key key)
{
    QWidget *window = copy.window();
    window->activateWindow();
    waitFor([window] { return QApplication::activeWindow() == window; }, QStringLiteral("the window's activation"));
    QTest::keyClick(window, key);
}

// Runs `act` on the dialog `name` of the copy once the next action has it up.
void whenDialogShows(Copy &copy, const char *name, std::function<void(QWidget *)> act)
{
    QTimer::singleShot(0, [&copy, name, act] {
        QWidget *dialog = nullptr;
        waitFor([&] {
            dialog = copy.window()->findChild<QWidget *>(QString::fromLatin1(name));
            return dialog && dialog->isVisible();
        }, QStringLiteral("dialog ") + QLatin1String(name));
        if (dialog)
            act(dialog);
    });
}

template <typename T>
T *child(QWidget *parent, const char *name)
{
    T *found = parent->findChild<T *>(QString::fromLatin1(name));
    if (!found)
        qFatal("no control %s in %s", name, qPrintable(parent->objectName()));
    return found;
}

// --- The darts of the people at the board -------------------------------------------

double uniform()
{
    return dartRandom.generateDouble();
}
int below(int n)
{
    return int(dartRandom.bounded(n));
}
double gauss()
{
    const double u1 = 1.0 - uniform();
    const double u2 = uniform();
    return std::sqrt(-2.0 * std::log(u1)) * std::cos(2 * pi * u2);
}
QPoint rounded(QPointF p)
{
    return {qRound(p.x()), qRound(p.y())};
}
QPointF polar(double radius, double degrees)
{
    return {radius * std::cos(degrees * pi / 180), radius * std::sin(degrees * pi / 180)};
}
double degreesOf(QPoint p)
{
    double a = std::atan2(double(p.y()), double(p.x())) * 180 / pi;
    return a < 0 ? a + 360 : a;
}
// The angle through the middle of a number, counter-clockwise from the 6.
double numberAngle(int number)
{
    static const int clockwise[] = {20, 1, 18, 4, 13, 6, 10, 15, 2, 17, 3, 19, 7, 16, 8, 11, 14, 9, 12, 5};
    for (int i = 0; i < 20; ++i) {
        if (clockwise[i] == number) {
            const double a = 90.0 - 18.0 * i;
            return a < 0 ? a + 360 : a;
        }
    }
    return 90;
}
QPoint near(QPointF aim, double spread)
{
    return rounded(aim + QPointF(gauss() * spread, gauss() * spread));
}
// A point between two rings: on the wire, by the radius.
QPoint ringWire()
{
    static const int gaps[] = {7, 19, 113, 125, 189, 201};
    const int gap = gaps[below(6)];
    for (int tries = 0; tries < 200; ++tries) {
        const QPoint p = rounded(polar(gap + 0.5, uniform() * 360));
        const double r = std::hypot(double(p.x()), double(p.y()));
        if (r > gap && r < gap + 1)
            return p;
    }
    return rounded(polar(gap + 0.5, 90));
}
// A point between two numbers: on the wire, by the angle.
QPoint segmentWire()
{
    const double middle = 9 + 18.0 * below(20);
    for (int tries = 0; tries < 200; ++tries) {
        const QPoint p = rounded(polar(25 + uniform() * 160, middle + (uniform() - 0.5) * 0.9));
        const double a = degreesOf(p);
        if (std::fabs(a - middle) < 0.5)
            return p;
    }
    return rounded(polar(100, middle));
}
// A point exactly on the edge of a ring.
QPoint ringEdge()
{
    static const int radii[] = {7, 8, 19, 20, 113, 114, 125, 126, 189, 190, 201, 202};
    const int r = radii[below(12)];
    const QPoint axes[] = {{r, 0}, {0, r}, {-r, 0}, {0, -r}};
    return axes[below(4)];
}
// The middle of an area: a treble, a double, a single, the bull or the 25.
QPoint area()
{
    const int pick = below(10);
    if (pick == 0)
        return {0, 0};
    if (pick == 1)
        return {0, 13};
    const int number = 1 + below(20);
    const double radii[] = {118, 196, 150, 65};
    return rounded(polar(radii[pick % 4], numberAngle(number)));
}
// A dart aimed at `aim` (board units): mostly near it, now and then on a
// wire, on the edge of a ring, anywhere on the board, off it, or in the
// middle of some area.
QPoint dartAt(QPointF aim)
{
    const int kind = below(100);
    if (kind < 45)
        return near(aim, 9);
    if (kind < 60)
        return rounded(aim);
    if (kind < 68)
        return ringWire();
    if (kind < 74)
        return segmentWire();
    if (kind < 79)
        return ringEdge();
    if (kind < 87)
        return rounded(polar(201 * std::sqrt(uniform()), uniform() * 360));
    if (kind < 93) {
        const QPoint p = rounded(polar(203 + uniform() * 55, uniform() * 360));
        return {std::clamp(p.x(), -259, 259), std::clamp(p.y(), -259, 259)};
    }
    return area();
}

void throwAt(Copy &copy, QPoint board)
{
    ++counts.darts;
    QTest::mouseClick(copy.picture(), Qt::LeftButton, {}, pixelOf(board));
}

// Drags a marker by its middle to a picture pixel and drops it there.
void drag(Copy &copy, const tavrix::DartMarker *marker, QPoint to, Qt::MouseButton button)
{
    QWidget *picture = copy.picture();
    const QPoint from = marker->pos() + QPoint(marker->width() / 2, marker->height() / 2);
    QTest::mousePress(picture, button, {}, from);
    QTest::mouseMove(picture, (from + to) / 2);
    QTest::mouseMove(picture, to);
    QTest::mouseRelease(picture, button, {}, to);
}

// A drop point for a marker: near where it stands, now and then off the picture.
QPoint dropPoint(const tavrix::DartMarker *marker)
{
    if (below(100) < 6)
        return {-15, 100 + below(300)};
    const QPointF centre(marker->x() + marker->width() / 2.0 - 260, 260 - (marker->y() + marker->height() / 2.0));
    return pixelOf(near(centre, 14));
}

void hover(Copy &copy)
{
    QTest::mouseMove(copy.picture(), pixelOf(dartAt(QPointF(0, 100))));
}

// --- Games at one board ---------------------------------------------------------------

struct Style {
    bool undo = false;        // darts taken back with the button and with Backspace
    bool drags = false;       // a dart dragged once the set is complete
    bool rightDrags = false;  // a dart dragged with the right button before the third
    bool targetDrags = false; // a target marker dragged
    bool corkDrags = false;   // the cork dart dragged before it is confirmed
    bool hover = false;       // the pointer moved over the board before some darts
};

// The markers of the side throwing now: its darts are the ones shown.
QString thrownMarker(const Copy &copy, int index)
{
    const QString local = QStringLiteral("Pips_%1").arg(index);
    return copy.markerShown(local) ? local : QStringLiteral("CPips_%1").arg(index);
}
int dartsShown(const Copy &copy)
{
    int shown = 0;
    for (int i = 0; i < 3; ++i)
        shown += copy.markerShown(QStringLiteral("Pips_%1").arg(i)) + copy.markerShown(QStringLiteral("CPips_%1").arg(i));
    return shown;
}

std::optional<QPoint> lastCork;

void throwCork(Copy &copy, const Style &style)
{
    // Now and then the second cork lands as far from the bull as the first.
    QPoint at = near({0, 0}, 30);
    if (lastCork && below(100) < 15)
        at = below(2) ? *lastCork : QPoint(-lastCork->x(), lastCork->y());
    lastCork = at;
    throwAt(copy, at);
    step(QStringLiteral("cork dart"));
    if (style.corkDrags && below(100) < 30) {
        const QString name = copy.markerShown(QStringLiteral("Pips_0")) ? QStringLiteral("Pips_0") : QStringLiteral("CPips_0");
        drag(copy, copy.marker(name), pixelOf(near({0, 0}, 30)), Qt::LeftButton);
        step(QStringLiteral("cork dragged"));
    }
}

// The score left to the side throwing in 301 or 501, from its large
// figures (its panel is the one lit); -1 in Cricket.
int scoreLeft(const Copy &copy)
{
    for (int player : {1, 2}) {
        const QWidget *panel = copy.window()->findChild<QWidget *>(QStringLiteral("p%1Glance").arg(player));
        if (panel && panel->styleSheet().contains(QLatin1String("#14642d"))) {
            bool number = false;
            const int left = copy.find<QLabel>(player == 1 ? "p1BigScore" : "p2BigScore")->text().toInt(&number);
            return number ? left : -1;
        }
    }
    return -1;
}

// Where a dart of a set goes: where the program advises, but near the end
// of a 301 or 501 now and then at the bull, for finishes there and busts.
QPoint setDart(const Copy &copy, int index, int left)
{
    const QPointF aim = left > 0 && left <= 170 && below(100) < 20 ? QPointF(0, 0) : copy.advice(index);
    return dartAt(aim);
}

// One set of the side throwing at this board, confirmed with "Ok".
void playSet(Copy &copy, const Style &style, int number)
{
    const QString name = QStringLiteral("set %1").arg(number);
    const int planned = below(100) < 12 ? 1 + below(2) : 3;
    int undone = 0;
    const int left = scoreLeft(copy);
    while (dartsShown(copy) < planned) {
        const int placed = dartsShown(copy);
        if (style.hover && below(100) < 8) {
            hover(copy);
            step(name + QStringLiteral(" pointer"));
        }
        throwAt(copy, setDart(copy, placed, left));
        if (style.undo && undone < 2 && below(100) < 14) {
            if (undone++ % 2 == 0)
                press(copy, copy.find<QPushButton>("btnUndoDart"), QStringLiteral("Undo dart"));
            else
                key(copy, Qt::Key_Backspace);
            step(name + QStringLiteral(" undo"));
        } else if (style.rightDrags && dartsShown(copy) < 3 && below(100) < 12) {
            const tavrix::DartMarker *m = copy.marker(thrownMarker(copy, dartsShown(copy) - 1));
            drag(copy, m, dropPoint(m), Qt::RightButton);
            step(name + QStringLiteral(" right drag"));
        }
    }
    if (planned == 3 && style.drags && below(100) < 30) {
        const tavrix::DartMarker *m = copy.marker(thrownMarker(copy, below(3)));
        drag(copy, m, dropPoint(m), Qt::LeftButton);
        step(name + QStringLiteral(" drag"));
    }
    if (style.targetDrags && below(100) < 25) {
        const QString target = QStringLiteral("TargetPips_%1").arg(below(3));
        if (copy.markerShown(target)) {
            const tavrix::DartMarker *m = copy.marker(target);
            drag(copy, m, dropPoint(m), dartsShown(copy) == 3 ? Qt::LeftButton : Qt::RightButton);
            step(name + QStringLiteral(" target drag"));
        }
    }
    ++counts.sets;
    pressMain(copy, QStringLiteral("Ok"));
    settle();
    step(name);
}

// Plays the game on the board until it is over (true), or until it ends
// otherwise (false). `midGame` runs once when `atSet` sets were thrown and
// says whether the game goes on.
bool playGame(Copy &copy, const Style &style, int atSet = -1, const std::function<bool()> &midGame = {})
{
    lastCork.reset();
    int sets = 0;
    for (int guard = 0; guard < 1000; ++guard) {
        QPushButton *button = copy.mainButton();
        const QString caption = button->text();
        if (caption == QLatin1String("Play Again") && button->isEnabled()) {
            ++counts.games;
            return true;
        }
        if (caption == QLatin1String("Start Game"))
            return false;
        if (sets == atSet && midGame) {
            atSet = -1;
            if (!midGame())
                return false;
            continue;
        }
        if (sets >= 150) {
            surprise(copy, QStringLiteral("no end after 150 sets"));
            copy.answers = {true};
            press(copy, copy.find<QPushButton>("btnQuitGame"));
            step(QStringLiteral("given up"));
            return false;
        }
        if (button->isEnabled()) {
            const bool cork = caption == QLatin1String("Confirm Dart");
            press(copy, button, caption);
            settle();
            step(cork ? QStringLiteral("cork confirmed") : QStringLiteral("ok"));
            continue;
        }
        if (copy.picture()->isEnabled()) {
            if (caption == QLatin1String("Confirm Dart"))
                throwCork(copy, style);
            else
                playSet(copy, style, ++sets);
            continue;
        }
        settle();
        step(QStringLiteral("waited"));
    }
    surprise(copy, QStringLiteral("the game loop went round too often"));
    return false;
}

// After a game is over, "Quit Game" brings the options back.
void backToOptions(Copy &copy)
{
    if (copy.mainButton()->text() == QLatin1String("Start Game"))
        return;
    press(copy, copy.find<QPushButton>("btnQuitGame"), QStringLiteral("Quit Game"));
    step(QStringLiteral("back to the options"));
}

void check(Copy &copy, const char *name, bool on)
{
    auto *box = copy.find<QAbstractButton>(name);
    if (box->isChecked() != on)
        box->click();
}

// --- The flows ---------------------------------------------------------------------------

QString typeInto(QWidget *dialog, const char *line, const QString &text)
{
    child<QLineEdit>(dialog, line)->setText(text);
    return text;
}

// The first start in an empty home: the new player dialog, first left blank.
void firstStart(Copy &copy, const QString &player)
{
    whenDialogShows(copy, "NewUserDialog", [&copy, player](QWidget *dialog) {
        step(QStringLiteral("new player dialog"));
        typeInto(dialog, "NameText", QStringLiteral("  "));
        child<QPushButton>(dialog, "OKButton")->click();
        step(QStringLiteral("blank name"));
        typeInto(dialog, "NameText", player);
        child<QPushButton>(dialog, "OKButton")->click();
    });
    if (!copy.start())
        qFatal("%s did not start", qPrintable(copy.name));
    copy.player = player;
    // The game choices are stored in the home; a first start has none.
    step(QStringLiteral("started"));
}

struct ComputerGame {
    const char *label;
    const char *game;   // opGame_n
    int rules;          // opCricketOptions_n, or -1
    const char *skill;  // opSkill_n
    bool keep;
};

void computerGames(Copy &ann, const std::vector<ComputerGame> &games)
{
    Style style;
    style.hover = true;
    for (const ComputerGame &g : games) {
        beginFlow(QStringLiteral("computer-") + QLatin1String(g.label));
        for (const char *option : {"opOpponent_0", g.skill, g.game})
            ann.find<QAbstractButton>(option)->click();
        if (g.rules >= 0)
            ann.find<QAbstractButton>(g.rules == 0 ? "opCricketOptions_0" : "opCricketOptions_1")->click();
        check(ann, g.rules >= 0 ? "chkKeepCricketStats" : "chkKeep01stats", g.keep);
        step(QStringLiteral("options"));
        pressMain(ann, QStringLiteral("Start Game"));
        settle();
        step(QStringLiteral("start"));
        if (playGame(ann, style)) {
            step(QStringLiteral("over"));
            beginFlow(QStringLiteral("computer-") + QLatin1String(g.label) + QStringLiteral("-again"));
            pressMain(ann, QStringLiteral("Play Again"));
            settle();
            step(QStringLiteral("play again"));
            if (playGame(ann, style))
                step(QStringLiteral("over"));
        }
        backToOptions(ann);
    }
}

// Darts of earlier practice and games, so that the "You" level can be played.
void addRecordedDarts(const Copy &copy, int count)
{
    const QString name = QStringLiteral("trace-writer");
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(copy.dbPath);
        if (!db.open())
            qFatal("cannot write %s", qPrintable(copy.dbPath));
        QSqlQuery query(db);
        db.transaction();
        query.exec(QStringLiteral("INSERT INTO statstargets (creationdate, players_id, targetValue, targetRing)"
                                  " VALUES ('2020-01-01 10:00:00', 1, 20, 3)"));
        const qint64 target = query.lastInsertId().toLongLong();
        query.exec(QStringLiteral("INSERT INTO games (creationdate, players_id, gametype, skill, opponent, result,"
                                  " throws, points, bestset, outset) VALUES ('2020-01-01 10:00:00', 1, 3, 1,"
                                  " 'Computer', 'L', 45, 380, 100, 0)"));
        const qint64 game = query.lastInsertId().toLongLong();
        for (int i = 0; i < count; ++i) {
            const QPoint aim = rounded(polar(118, numberAngle(20)));
            const QPoint at = near(aim, 10 + i % 40);
            const double dist = std::hypot(double(at.x() - aim.x()), double(at.y() - aim.y())) + i * 0.001;
            if (i % 2 == 0) {
                query.prepare(QStringLiteral("INSERT INTO statsthrows (players_id, statstargets_id, seq, x, y, dist,"
                                             " score, ring) VALUES (1, ?, ?, ?, ?, ?, 20, 1)"));
                query.addBindValue(target);
                query.addBindValue(i % 3);
            } else {
                query.prepare(QStringLiteral("INSERT INTO gamesdarts (creationDate, games_id, players_id, setseq,"
                                             " dartseq, x, y, dist, score, ring, targetscore, targetring)"
                                             " VALUES ('2020-01-01 10:00:00', ?, 1, ?, 0, ?, ?, ?, 20, 1, 20, 3)"));
                query.addBindValue(game);
                query.addBindValue(1 + i / 2);
            }
            query.addBindValue(double(at.x()));
            query.addBindValue(double(at.y()));
            query.addBindValue(dist);
            if (!query.exec())
                qFatal("%s", qPrintable(query.lastError().text()));
        }
        db.commit();
        db.close();
    }
    QSqlDatabase::removeDatabase(name);
}

void answerOpponent(Copy &copy, const QString &name, const char *button = "OKButton")
{
    whenDialogShows(copy, "OpponentNameDialog", [name, button](QWidget *dialog) {
        typeInto(dialog, "Text1", name);
        step(QStringLiteral("opponent dialog"));
        child<QPushButton>(dialog, button)->click();
    });
}

struct PeopleGame {
    const char *label;
    const char *game;
    int rules;
    bool keep;
    const char *opponent;
    Style style;
    bool again;
    // After how many sets the middle-of-the-game action comes, and what it is.
    int atSet = -1;
    std::function<bool(Copy &)> midGame;
};

void peopleGames(Copy &ann)
{
    Style full;
    full.undo = full.drags = full.corkDrags = full.hover = true;
    Style right;
    right.rightDrags = right.undo = true;
    Style targets;
    targets.targetDrags = targets.drags = targets.rightDrags = true;
    Style plain;

    beginFlow(QStringLiteral("people-setup"));
    ann.find<QAbstractButton>("opOpponent_1")->click();
    ann.find<QAbstractButton>("opGame_2")->click();
    step(QStringLiteral("human opponent"));
    answerOpponent(ann, QStringLiteral("Nobody"), "CancelButton");
    pressMain(ann, QStringLiteral("Start Game"));
    step(QStringLiteral("cancelled"));
    answerOpponent(ann, QStringLiteral("   "));
    pressMain(ann, QStringLiteral("Start Game"));
    step(QStringLiteral("blank name"));

    // Quitting half way: No, then Yes.
    auto quitGame = [](Copy &c) {
        c.answers = {false};
        press(c, c.find<QPushButton>("btnQuitGame"), QStringLiteral("Quit Game"));
        step(QStringLiteral("quit? no"));
        c.answers = {true};
        press(c, c.find<QPushButton>("btnQuitGame"), QStringLiteral("Quit Game"));
        step(QStringLiteral("quit? yes"));
        return false;
    };
    // Leaving play through the Mode menu: No keeps the game, Yes leaves it.
    auto leaveByMenu = [](Copy &c) {
        c.answers = {false};
        c.find<QAction>("mnuModePractice")->trigger();
        step(QStringLiteral("practice mode? no"));
        key(c, Qt::Key_Backspace);
        step(QStringLiteral("backspace"));
        c.answers = {true};
        c.find<QAction>("mnuModeReview")->trigger();
        step(QStringLiteral("review mode? yes"));
        c.find<QAction>("mnuModePractice")->trigger();
        step(QStringLiteral("practice mode"));
        c.find<QAction>("mnuModePlay")->trigger();
        step(QStringLiteral("play mode"));
        return false;
    };
    // The Mode menu in the middle of a game, answered Yes straight away.
    auto practiceByMenu = [](Copy &c) {
        c.answers = {true};
        c.find<QAction>("mnuModePractice")->trigger();
        step(QStringLiteral("practice mode? yes"));
        c.find<QAction>("mnuModePlay")->trigger();
        step(QStringLiteral("play mode"));
        return false;
    };

    const std::vector<PeopleGame> games = {
        {"501", "opGame_2", -1, true, "Bob O'Neil", full, true, -1, {}},
        {"301", "opGame_1", -1, false, "Cleo", right, false, -1, {}},
        {"cricket-simple", "opGame_0", 0, true, "Dee Dee", targets, true, -1, {}},
        {"cricket-standard-quit", "opGame_0", 1, true, "Eve", full, false, 6, quitGame},
        {"501-mode-menu", "opGame_2", -1, false, "Finn", right, false, 4, leaveByMenu},
        {"cricket-standard", "opGame_0", 1, false, "Gus", full, false, -1, {}},
        {"301-keep", "opGame_1", -1, true, "Hal", targets, true, -1, {}},
        {"301-practice-menu", "opGame_1", -1, true, "Ida", plain, false, 2, practiceByMenu},
    };
    for (const PeopleGame &g : games) {
        beginFlow(QStringLiteral("people-") + QLatin1String(g.label));
        for (const char *option : {"opOpponent_1", g.game})
            ann.find<QAbstractButton>(option)->click();
        if (g.rules >= 0)
            ann.find<QAbstractButton>(g.rules == 0 ? "opCricketOptions_0" : "opCricketOptions_1")->click();
        check(ann, g.rules >= 0 ? "chkKeepCricketStats" : "chkKeep01stats", g.keep);
        step(QStringLiteral("options"));
        answerOpponent(ann, QString::fromUtf8(g.opponent));
        pressMain(ann, QStringLiteral("Start Game"));
        settle();
        step(QStringLiteral("start"));
        std::function<bool()> midGame;
        if (g.midGame)
            midGame = [&ann, &g] { return g.midGame(ann); };
        if (playGame(ann, g.style, g.atSet, midGame)) {
            step(QStringLiteral("over"));
            if (g.again) {
                beginFlow(QStringLiteral("people-") + QLatin1String(g.label) + QStringLiteral("-again"));
                pressMain(ann, QStringLiteral("Play Again"));
                settle();
                step(QStringLiteral("play again"));
                if (playGame(ann, g.style))
                    step(QStringLiteral("over"));
            }
        }
        backToOptions(ann);
    }
}

// The target a practice set shoots for, from the words under the Go button.
QPointF practiceAim(const Copy &copy)
{
    const QString text = copy.text("GeneralText");
    if (text.contains(QLatin1String("Bull")))
        return {0, 0};
    const QRegularExpressionMatch match =
        QRegularExpression(QStringLiteral("(Any|Double|Triple) (\\d+)")).match(text);
    if (!match.hasMatch())
        return {0, 100};
    const QString ring = match.captured(1);
    const double radius = ring == QLatin1String("Double") ? 196 : ring == QLatin1String("Triple") ? 118 : 150;
    return polar(radius, numberAngle(match.captured(2).toInt()));
}

// Opens (when the Go button says so), throws and confirms one practice set.
void practiceSet(Copy &copy, int number, bool drags)
{
    const QString name = QStringLiteral("set %1").arg(number);
    QPushButton *go = copy.find<QPushButton>("goButton");
    if (go->text() == QLatin1String("Go")) {
        if (below(100) < 30)
            key(copy, Qt::Key_Return);
        else
            press(copy, go, QStringLiteral("Go"));
        step(name + QStringLiteral(" go"));
    }
    for (int dart = 0; dart < 3; ++dart) {
        if (below(100) < 15) {
            hover(copy);
            step(name + QStringLiteral(" pointer"));
        }
        throwAt(copy, dartAt(practiceAim(copy)));
    }
    if (below(100) < 10) {
        // A fourth dart is not taken.
        throwAt(copy, dartAt(practiceAim(copy)));
        step(name + QStringLiteral(" fourth dart"));
    }
    if (drags) {
        for (int i = below(4); i > 0; --i) {
            const tavrix::DartMarker *m = copy.marker(QStringLiteral("Pips_%1").arg(below(3)));
            drag(copy, m, dropPoint(m), below(4) == 0 ? Qt::RightButton : Qt::LeftButton);
            step(name + QStringLiteral(" drag"));
        }
    }
    ++counts.practiceSets;
    if (below(100) < 35)
        key(copy, Qt::Key_Return);
    else
        press(copy, go, QStringLiteral("Confirm Darts"));
    step(name);
}

void practice(Copy &ann)
{
    beginFlow(QStringLiteral("practice-targets"));
    ann.find<QAction>("mnuModePractice")->trigger();
    step(QStringLiteral("practice mode"));
    // Ring: 0 random, 1 any, 2 double, 3 treble; score: 0 random, 1 count
    // down, 2 count up, 3 the bull, then 20 down to 1.
    const std::pair<int, int> targets[] = {{2, 4},  {3, 4},  {1, 5},  {1, 3},  {2, 3}, {3, 23}, {2, 9},
                                           {0, 10}, {3, 0},  {0, 0},  {0, 0},  {1, 0}, {2, 17}, {0, 3},
                                           {3, 6},  {1, 14}, {2, 20}, {0, 0}};
    int number = 0;
    for (const auto &[ring, score] : targets) {
        ann.find<QComboBox>("RingDrop")->setCurrentIndex(ring);
        ann.find<QComboBox>("ScoreDrop")->setCurrentIndex(score);
        ++number;
        practiceSet(ann, number, number % 3 == 0);
    }

    beginFlow(QStringLiteral("practice-count-down"));
    ann.find<QComboBox>("RingDrop")->setCurrentIndex(3);
    ann.find<QComboBox>("ScoreDrop")->setCurrentIndex(1);
    for (int set = 1; set <= 21; ++set) {
        practiceSet(ann, set, set % 4 == 1);
        if (set == 5) {
            // Enter never quits a sequence.
            key(ann, Qt::Key_Return);
            step(QStringLiteral("enter on the quit caption"));
        }
    }

    beginFlow(QStringLiteral("practice-count-up-quit"));
    ann.find<QComboBox>("RingDrop")->setCurrentIndex(2);
    ann.find<QComboBox>("ScoreDrop")->setCurrentIndex(2);
    for (int set = 1; set <= 7; ++set)
        practiceSet(ann, set, false);
    press(ann, ann.find<QPushButton>("goButton"), QStringLiteral("Quit\nCount\nUp"));
    step(QStringLiteral("quit"));

    beginFlow(QStringLiteral("practice-count-up"));
    ann.find<QComboBox>("RingDrop")->setCurrentIndex(1);
    ann.find<QComboBox>("ScoreDrop")->setCurrentIndex(2);
    for (int set = 1; set <= 21; ++set)
        practiceSet(ann, set, set % 5 == 0);
    // Leaving practice with a set open ends it.
    ann.find<QComboBox>("ScoreDrop")->setCurrentIndex(5);
    practiceSet(ann, 22, false);
    press(ann, ann.find<QPushButton>("goButton"), QStringLiteral("Go"));
    step(QStringLiteral("open set"));
    ann.find<QAction>("mnuModeReview")->trigger();
    step(QStringLiteral("review mode"));
    ann.find<QAction>("mnuModePractice")->trigger();
    step(QStringLiteral("practice mode"));
}

void review(Copy &ann)
{
    beginFlow(QStringLiteral("review"));
    hashBoardPicture = true;
    ann.find<QAction>("mnuModeReview")->trigger();
    step(QStringLiteral("review mode"));
    const std::pair<const char *, QPoint> areas[] = {
        {"T20", rounded(polar(118, numberAngle(20)))}, {"D20", rounded(polar(196, numberAngle(20)))},
        {"S20 outer", rounded(polar(150, numberAngle(20)))}, {"S20 inner", rounded(polar(65, numberAngle(20)))},
        {"bull", {0, 0}}, {"25", {0, 13}}, {"T19", rounded(polar(118, numberAngle(19)))},
        {"D16", rounded(polar(196, numberAngle(16)))}, {"S5", rounded(polar(150, numberAngle(5)))},
        {"T1", rounded(polar(119, numberAngle(1)))}, {"D3", rounded(polar(195, numberAngle(3)))},
        {"off the board", {0, 230}}, {"ring wire", {0, 0}}, {"segment wire", {0, 0}}, {"T18", rounded(polar(118, numberAngle(18)))},
    };
    for (const auto &[label, point] : areas) {
        QPoint at = point;
        if (QLatin1String(label) == QLatin1String("ring wire"))
            at = ringWire();
        else if (QLatin1String(label) == QLatin1String("segment wire"))
            at = segmentWire();
        QTest::mouseMove(ann.picture(), pixelOf(at));
        step(QStringLiteral("pointer on ") + QLatin1String(label));
        throwAt(ann, at);
        ++counts.reviewAreas;
        --counts.darts;
        step(QStringLiteral("click on ") + QLatin1String(label));
    }
    hashBoardPicture = false;
    ann.find<QAction>("mnuModePlay")->trigger();
    step(QStringLiteral("play mode"));
}

// --- The network game --------------------------------------------------------------------

quint16 freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::Any, 0);
    return probe.serverPort();
}

void netStep(const QString &name)
{
    ++counts.networkSteps;
    step(name);
}

// Starts a game against a person with network play, as server or client.
void startNetworkGame(Copy &copy, bool server, quint16 port)
{
    copy.find<QAbstractButton>("opOpponent_1")->click();
    whenDialogShows(copy, "OpponentNameDialog", [&copy, server, port](QWidget *dialog) {
        auto *network = child<QCheckBox>(dialog, "Check1");
        if (!network->isChecked())
            network->click();
        child<QRadioButton>(dialog, server ? "opBeServer" : "opBeClient")->click();
        typeInto(dialog, "txtClientHost", QStringLiteral("127.0.0.1"));
        typeInto(dialog, "txtClientPort", QString::number(port));
        typeInto(dialog, "txtServerPort", QString::number(port));
        netStep(copy.name + QStringLiteral(" opponent dialog"));
        child<QPushButton>(dialog, "OKButton")->click();
    });
    press(copy, copy.mainButton(), QStringLiteral("Start Game"));
}

bool waitingForThrow(const Copy &copy)
{
    const QString text = copy.text("gameText");
    return text.startsWith(QLatin1String("\nWaiting for ")) && text.endsWith(QLatin1String(" to throw..."));
}
bool throwing(const Copy &copy)
{
    const QPushButton *button = copy.mainButton();
    return button->text() == QLatin1String("Ok") && !button->isEnabled() && copy.picture()->isEnabled()
           && copy.text("gameText").contains(QLatin1String(": Throw your darts"));
}
bool awaitingCork(const Copy &copy)
{
    return copy.text("gameText").endsWith(QLatin1String(" to throw the cork..."));
}
bool localCork(const Copy &copy)
{
    const QPushButton *button = copy.mainButton();
    return button->text() == QLatin1String("Confirm Dart") && !button->isEnabled() && copy.picture()->isEnabled()
           && copy.text("gameText").contains(QLatin1String(": Throw the cork."));
}
bool over(const Copy &copy)
{
    return copy.mainButton()->text() == QLatin1String("Play Again");
}

QString transcript(const Copy &copy)
{
    return copy.inDialog<QPlainTextEdit>("ChatDialog", "txtTranscript")->toPlainText();
}

// A chat line from one copy, seen on the other.
void chat(Copy &from, Copy &to, const QString &line, const QString &seen, bool enter)
{
    const QString expected = from.player + QStringLiteral(": ") + seen;
    const qsizetype heard = transcript(to).count(expected);
    from.find<QAction>("mnuShowChat")->trigger();
    auto *edit = from.inDialog<QLineEdit>("ChatDialog", "txtMessage");
    edit->setText(line);
    if (enter)
        QTest::keyClick(edit, Qt::Key_Return);
    else
        from.inDialog<QPushButton>("ChatDialog", "OKButton")->click();
    waitFor([&] { return transcript(to).count(expected) > heard; }, QStringLiteral("chat line on ") + to.name);
    ++counts.chatLines;
    netStep(QStringLiteral("chat from ") + from.name);
}

// The corks, the client's first; `firstOk` clicks "Ok" first, and tells the
// other by a chat line before that one clicks too.
void netCork(Copy &server, Copy &client, Copy &firstOk, bool tie)
{
    lastCork.reset();
    waitFor([&] { return localCork(client) && awaitingCork(server); }, QStringLiteral("the client's cork"));
    const QPoint clientCork = near({0, 0}, 30);
    throwAt(client, clientCork);
    netStep(QStringLiteral("client's cork"));
    pressMain(client, QStringLiteral("Confirm Dart"));
    waitFor([&] { return localCork(server); }, QStringLiteral("the server's cork"));
    netStep(QStringLiteral("client's cork confirmed"));
    throwAt(server, tie ? QPoint(-clientCork.x(), clientCork.y()) : near({0, 0}, 30));
    netStep(QStringLiteral("server's cork"));
    pressMain(server, QStringLiteral("Confirm Dart"));
    waitFor([&] { return client.mainButton()->isEnabled() && client.mainButton()->text() == QLatin1String("Ok"); },
            QStringLiteral("the cork's result on the client"));
    netStep(QStringLiteral("server's cork confirmed"));
    Copy &other = &firstOk == &server ? client : server;
    pressMain(firstOk, QStringLiteral("Ok"));
    netStep(firstOk.name + QStringLiteral(" ok"));
    chat(firstOk, other, QStringLiteral("ready"), QStringLiteral("ready"), true);
    pressMain(other, QStringLiteral("Ok"));
    waitFor([&] { return (throwing(server) && waitingForThrow(client)) || (throwing(client) && waitingForThrow(server)); },
            QStringLiteral("the first turn"));
    netStep(other.name + QStringLiteral(" ok"));
}

// Sets thrown and watched in turn until both copies show the game over, or
// until `midGame` (run once after `atSet` sets) ends it.
bool netGame(Copy &a, Copy &b, int atSet = -1, const std::function<bool()> &midGame = {})
{
    for (int set = 1; set <= 200; ++set) {
        if (set - 1 == atSet && midGame && !midGame())
            return false;
        Copy *thrower = throwing(a) ? &a : throwing(b) ? &b : nullptr;
        if (!thrower) {
            surprise(a, QStringLiteral("no copy is throwing"));
            return false;
        }
        Copy &watcher = thrower == &a ? b : a;
        const QString name = QStringLiteral("set %1 ").arg(set);
        const int planned = below(100) < 12 ? 1 + below(2) : 3;
        const int left = scoreLeft(*thrower);
        for (int dart = 0; dart < planned; ++dart)
            throwAt(*thrower, setDart(*thrower, dart, left));
        if (planned == 3 && below(100) < 20) {
            const tavrix::DartMarker *m = thrower->marker(QStringLiteral("Pips_%1").arg(below(3)));
            drag(*thrower, m, dropPoint(m), Qt::LeftButton);
            netStep(name + thrower->name + QStringLiteral(" drag"));
        }
        ++counts.sets;
        pressMain(*thrower, QStringLiteral("Ok"));
        netStep(name + thrower->name + QStringLiteral(" ok"));
        waitFor([&] { return watcher.mainButton()->isEnabled() && !watcher.busy(); },
                QStringLiteral("the set on ") + watcher.name);
        netStep(name + watcher.name + QStringLiteral(" saw it"));
        pressMain(watcher, QStringLiteral("Ok"));
        settle();
        netStep(name + watcher.name + QStringLiteral(" ok"));
        if (over(a) && over(b)) {
            ++counts.games;
            return true;
        }
    }
    surprise(a, QStringLiteral("no end after 200 sets"));
    return false;
}

// "Play Again" asked by one copy and granted by the other.
void playAgain(Copy &server, Copy &client, Copy &asker)
{
    Copy &other = &asker == &server ? client : server;
    pressMain(asker, QStringLiteral("Play Again"));
    waitFor([&] { return other.text("gameText").contains(QLatin1String("wants to play again")); },
            QStringLiteral("the request to play again"));
    netStep(asker.name + QStringLiteral(" asks to play again"));
    pressMain(other, QStringLiteral("Play Again"));
    waitFor([&] { return localCork(client) && awaitingCork(server); }, QStringLiteral("the new game"));
    netStep(other.name + QStringLiteral(" agrees"));
}

void network(const QString &annHome, const QString &bobHome)
{
    Copy ann(QStringLiteral("A"), annHome);
    Copy bob(QStringLiteral("B"), bobHome);
    ann.player = QStringLiteral("Ann Lee");
    beginFlow(QStringLiteral("network-start"));
    if (!ann.start())
        qFatal("the server did not start");
    firstStart(bob, QStringLiteral("Bob"));
    beginFlow(QStringLiteral("network-connect"));
    const quint16 port = freePort();
    out.setPort(port);
    ann.find<QAbstractButton>("opGame_2")->click();
    check(ann, "chkKeep01stats", true);
    // The client's own choice gives way to the server's.
    bob.find<QAbstractButton>("opGame_0")->click();
    netStep(QStringLiteral("options"));
    startNetworkGame(ann, true, port);
    netStep(QStringLiteral("server waits"));
    startNetworkGame(bob, false, port);
    waitFor([&] {
        return ann.find<QLabel>("lblNetworkActive")->isVisibleTo(ann.window())
               && bob.find<QLabel>("lblNetworkActive")->isVisibleTo(bob.window())
               && bob.find<QAbstractButton>("opGame_2")->isChecked() && localCork(bob) && awaitingCork(ann);
    }, QStringLiteral("the connection"));
    netStep(QStringLiteral("connected"));

    beginFlow(QStringLiteral("network-501"));
    netCork(ann, bob, bob, false);
    if (netGame(ann, bob)) {
        beginFlow(QStringLiteral("network-501-again-server-asks"));
        playAgain(ann, bob, ann);
        netCork(ann, bob, ann, true);
        if (netGame(ann, bob)) {
            beginFlow(QStringLiteral("network-501-again-client-asks"));
            playAgain(ann, bob, bob);
            netCork(ann, bob, bob, false);
            netGame(ann, bob, 3, [&] {
                chat(ann, bob, QStringLiteral("Good darts|really"), QStringLiteral("Good darts"), true);
                chat(bob, ann, QStringLiteral("Thanks, Ann"), QStringLiteral("Thanks, Ann"), false);
                const int notices = int(ann.said.size());
                bob.answers = {true};
                press(bob, bob.find<QPushButton>("btnQuitGame"), QStringLiteral("Quit Game"));
                waitFor([&] { return ann.said.size() > notices && ann.mainButton()->text() == QLatin1String("Start Game"); },
                        QStringLiteral("the quit on the server"));
                netStep(QStringLiteral("client quit"));
                return false;
            });
        }
    }

    beginFlow(QStringLiteral("network-cricket-by-client"));
    bob.find<QAbstractButton>("opGame_0")->click();
    bob.find<QAbstractButton>("opCricketOptions_0")->click();
    netStep(QStringLiteral("client's options"));
    startNetworkGame(bob, false, port);
    waitFor([&] {
        return ann.find<QAbstractButton>("opGame_0")->isChecked() && awaitingCork(ann) && localCork(bob);
    }, QStringLiteral("the cricket game on the server"));
    netStep(QStringLiteral("cricket set up"));
    netCork(ann, bob, bob, false);
    netGame(ann, bob);

    beginFlow(QStringLiteral("network-close"));
    // "Quit Game" after the game is over tells the other copy too.
    const int said = int(bob.said.size());
    press(ann, ann.find<QPushButton>("btnQuitGame"), QStringLiteral("Quit Game"));
    waitFor([&] { return bob.said.size() > said && bob.mainButton()->text() == QLatin1String("Start Game"); },
            QStringLiteral("the quit on the client"));
    netStep(QStringLiteral("server back to the options"));
    ann.find<QAbstractButton>("opGame_1")->click();
    netStep(QStringLiteral("server's options"));
    startNetworkGame(ann, true, port);
    waitFor([&] {
        return bob.find<QAbstractButton>("opGame_1")->isChecked() && awaitingCork(ann) && localCork(bob);
    }, QStringLiteral("the 301 on the client"));
    netStep(QStringLiteral("301 set up"));
    netCork(ann, bob, ann, false);
    netGame(ann, bob, 2, [&] {
        ann.find<QAction>("mnuCloseNet")->trigger();
        waitFor([&] { return bob.text("gameText").contains(QLatin1String("disconnected")); },
                QStringLiteral("the closed connection on the client"));
        netStep(QStringLiteral("server closed the connection"));
        bob.answers = {true};
        press(bob, bob.find<QPushButton>("btnQuitGame"), QStringLiteral("Quit Game"));
        netStep(QStringLiteral("client quit"));
        bob.find<QAbstractButton>("opOpponent_0")->click();
        pressMain(bob, QStringLiteral("Start Game"));
        settle();
        netStep(QStringLiteral("client against the computer"));
        return false;
    });
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: QT_QPA_PLATFORM=offscreen %s OUTFILE\n", argv[0]);
        return 2;
    }
    if (!out.open(QString::fromLocal8Bit(argv[1]))) {
        std::fprintf(stderr, "cannot write %s\n", argv[1]);
        return 2;
    }
    // Figures are written the same way whatever the machine's language.
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QElapsedTimer clock;
    clock.start();

    QTemporaryDir annHome;
    QTemporaryDir bobHome;
    out.addHome(annHome.path());
    out.addHome(bobHome.path());
    {
        auto ann = std::make_unique<Copy>(QStringLiteral("A"), annHome.path());
        beginFlow(QStringLiteral("start"));
        firstStart(*ann, QStringLiteral("Ann Lee"));
        computerGames(*ann, {{"501-bplayer", "opGame_2", -1, "opSkill_0", true},
                             {"301-double-in-aplayer", "opGame_1", -1, "opSkill_1", false},
                             {"cricket-simple-master", "opGame_0", 0, "opSkill_2", true},
                             {"cricket-standard-bplayer", "opGame_0", 1, "opSkill_0", false}});
        beginFlow(QStringLiteral("restart-with-recorded-darts"));
        ann->stop();
        addRecordedDarts(*ann, 260);
        if (!ann->start())
            qFatal("the restart failed");
        seedCopies();
        step(QStringLiteral("restarted"));
        computerGames(*ann, {{"501-you", "opGame_2", -1, "opSkill_3", false},
                             {"cricket-standard-you", "opGame_0", 1, "opSkill_3", true},
                             {"301-master", "opGame_1", -1, "opSkill_2", true}});
        peopleGames(*ann);
        practice(*ann);
        review(*ann);
    }
    network(annHome.path(), bobHome.path());

    beginFlow(QStringLiteral("summary"));
    out.line(QStringLiteral("games %1, board darts %2, sets %3, practice sets %4, review areas %5, network steps %6,"
                            " chat lines %7, timeouts %8, surprises %9")
                 .arg(counts.games)
                 .arg(counts.darts)
                 .arg(counts.sets)
                 .arg(counts.practiceSets)
                 .arg(counts.reviewAreas)
                 .arg(counts.networkSteps)
                 .arg(counts.chatLines)
                 .arg(counts.timeouts)
                 .arg(counts.surprises));
    std::fprintf(stderr,
                 "%d lines; games %d, board darts %d, sets %d, practice sets %d, review areas %d, network steps %d,"
                 " chat lines %d; timeouts %d, surprises %d; %.1f s\n",
                 out.lines(), counts.games, counts.darts, counts.sets, counts.practiceSets, counts.reviewAreas,
                 counts.networkSteps, counts.chatLines, counts.timeouts, counts.surprises, clock.elapsed() / 1000.0);
    return counts.timeouts + counts.surprises > 0 ? 1 : 0;
}
