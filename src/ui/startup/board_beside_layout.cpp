#include "ui/startup/board_beside_layout.h"

#include <QWidget>

#include <algorithm>

namespace tavrix {

BoardBesideLayout::BoardBesideLayout(QWidget *parent, QWidget *board, QLayout *frames)
    : QLayout(parent)
{
    addChildWidget(board);
    board_ = new QWidgetItem(board);
    addChildLayout(frames);
    frames_ = frames;
}

BoardBesideLayout::~BoardBesideLayout()
{
    delete board_;
    delete frames_;
}

void BoardBesideLayout::addItem(QLayoutItem *)
{
    // The two places are given at construction; nothing else is laid here.
}

int BoardBesideLayout::count() const
{
    return (board_ ? 1 : 0) + (frames_ ? 1 : 0);
}

QLayoutItem *BoardBesideLayout::itemAt(int index) const
{
    QLayoutItem *const items[] = {board_, frames_};
    int seen = 0;
    for (QLayoutItem *item : items) {
        if (item && seen++ == index)
            return item;
    }
    return nullptr;
}

QLayoutItem *BoardBesideLayout::takeAt(int index)
{
    QLayoutItem *item = itemAt(index);
    if (item == board_)
        board_ = nullptr;
    else if (item == frames_)
        frames_ = nullptr;
    return item;
}

QSize BoardBesideLayout::withMargins(QSize inner) const
{
    const QMargins margins = contentsMargins();
    return inner + QSize(margins.left() + margins.right(), margins.top() + margins.bottom());
}

QSize BoardBesideLayout::minimumSize() const
{
    const QSize board = board_ ? board_->minimumSize() : QSize();
    const QSize frames = frames_ ? frames_->minimumSize() : QSize();
    return withMargins({board.width() + spacing() + frames.width(), std::max(board.height(), frames.height())});
}

QSize BoardBesideLayout::sizeHint() const
{
    const QSize board = board_ ? board_->minimumSize() : QSize();
    const QSize frames = frames_ ? frames_->sizeHint() : QSize();
    return withMargins({board.width() + spacing() + frames.width(), std::max(board.height(), frames.height())});
}

Qt::Orientations BoardBesideLayout::expandingDirections() const
{
    return Qt::Horizontal | Qt::Vertical;
}

int BoardBesideLayout::boardSide(QSize contents) const
{
    if (!board_)
        return 0;
    const int least = board_->minimumSize().width();
    // The frames' least width, not their preferred one, so that the board
    // keeps one size whichever mode's frame shows.
    const int framesWant = frames_ ? std::max(framesWidth_, frames_->minimumSize().width()) : 0;
    const int room = std::min(contents.height(), contents.width() - spacing() - framesWant);
    return std::max(least, room);
}

void BoardBesideLayout::setGeometry(const QRect &rect)
{
    QLayout::setGeometry(rect);
    const QRect inner = contentsRect();
    const int side = boardSide(inner.size());
    if (board_)
        board_->setGeometry(QRect(inner.left(), inner.top() + std::max(0, (inner.height() - side) / 2), side, side));
    if (frames_) {
        const int left = inner.left() + side + spacing();
        frames_->setGeometry(QRect(left, inner.top(), std::max(0, inner.right() + 1 - left), inner.height()));
    }
}

} // namespace tavrix
