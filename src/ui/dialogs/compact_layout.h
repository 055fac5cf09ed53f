#pragma once

// Tight margins and spacing for the frames beside the board, so that the
// board and a mode frame fit an 800 x 600 screen together.

namespace tavrix {

template <typename Layout>
Layout *compact(Layout *layout, int spacing = 0)
{
    layout->setContentsMargins(6, 2, 6, 4);
    layout->setSpacing(spacing);
    return layout;
}

} // namespace tavrix
