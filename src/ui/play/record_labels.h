#pragma once

// The two small records that float on the board during a game: "This Round"
// on the left and "Overall" on the right, each a title over its text.

#include <QList>

class QLabel;

namespace tavrix {

struct RecordLabels {
    QLabel *rstatTitleLabel = nullptr;
    QLabel *rstatsText = nullptr;
    QLabel *ostatTitleLabel = nullptr;
    QLabel *ostatsText = nullptr;

    QList<QLabel *> all() const { return {rstatTitleLabel, rstatsText, ostatTitleLabel, ostatsText}; }
};

} // namespace tavrix
