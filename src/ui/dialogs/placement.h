#pragma once

#include <algorithm>

#include <QPoint>
#include <QRect>
#include <QScreen>
#include <QWidget>

namespace tavrix {

// Dialogs are placed relative to the main window in twips, 15 to a pixel.
inline constexpr int twipsPerPixel = 15;

inline int pixelsFromTwips(int twips)
{
    return twips / twipsPerPixel;
}

// Moves the dialog so that its top-left corner lies the given twips right of
// and below the main window's top-left corner.
inline void placeBelowLeftOf(QWidget *dialog, const QWidget *mainWindow, int leftTwips,
                             int topTwips)
{
    if (!mainWindow)
        return;
    const QPoint corner = mainWindow->frameGeometry().topLeft();
    dialog->move(corner + QPoint(pixelsFromTwips(leftTwips), pixelsFromTwips(topTwips)));
}

// Moves a window as little as it takes for its frame to lie within its
// screen's available room, its top-left corner first when it is larger.
inline void keepOnScreen(QWidget *window)
{
    const QScreen *screen = window->screen();
    if (!screen)
        return;
    const QRect room = screen->availableGeometry();
    const QRect frame = window->frameGeometry();
    QPoint corner = frame.topLeft();
    corner.setX(std::max(room.left(), std::min(corner.x(), room.right() + 1 - frame.width())));
    corner.setY(std::max(room.top(), std::min(corner.y(), room.bottom() + 1 - frame.height())));
    if (corner != frame.topLeft())
        window->move(corner);
}

} // namespace tavrix
