#pragma once

#include <QPoint>
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

} // namespace tavrix
