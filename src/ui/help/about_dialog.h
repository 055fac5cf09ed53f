#pragma once

#include "ui/help/system_facts.h"

#include <QDialog>

#include <functional>

namespace tavrix {

class Messages;

// The About box: the program's title, its version, its licence and a picture
// of a board, with OK and a button that shows the facts a bug report needs.
// Made afresh for each showing.
class AboutDialog : public QDialog {
    Q_OBJECT

public:
    // `gatherFacts` collects the system facts when they are asked for; when
    // it throws or knows nothing, `messages` says they are unavailable.
    AboutDialog(Messages &messages, std::function<SystemFacts()> gatherFacts,
                QWidget *parent = nullptr);

private:
    void showSysInfo();

    Messages &messages_;
    std::function<SystemFacts()> gatherFacts_;
};

// The board picture, scaled down to a square of `side` pixels.
QPixmap dartboardPixmap(int side);

} // namespace tavrix
