#pragma once

// The button a mode is driven by, made to be hit without looking: bold, and
// half as tall again as its neighbours.

#include <QPushButton>

namespace tavrix {

inline void makeMainButton(QPushButton *button)
{
    QFont bold = button->font();
    bold.setBold(true);
    button->setFont(bold);
    button->setMinimumHeight(button->sizeHint().height() * 3 / 2);
}

} // namespace tavrix
