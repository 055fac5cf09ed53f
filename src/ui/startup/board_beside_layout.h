#pragma once

#include <QLayout>

namespace tavrix {

// Lays the board picture and the mode frames side by side. The board is the
// largest square the height allows while the frames keep a set width (or
// their least width, when larger), and never smaller than the board's least
// size; it stands in the middle of the height. The frames take the whole height and the rest of the
// width. So a small screen shows the board at its least size and a large one
// a larger board, with the frames beside it either way.
class BoardBesideLayout : public QLayout {
public:
    BoardBesideLayout(QWidget *parent, QWidget *board, QLayout *frames);
    ~BoardBesideLayout() override;

    // The width a larger board never takes from the frames.
    void setFramesWidth(int width) { framesWidth_ = width; }
    // The board's side for a contents rectangle of this size.
    int boardSide(QSize contents) const;

    void addItem(QLayoutItem *item) override;
    int count() const override;
    QLayoutItem *itemAt(int index) const override;
    QLayoutItem *takeAt(int index) override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    Qt::Orientations expandingDirections() const override;
    void setGeometry(const QRect &rect) override;

private:
    QSize withMargins(QSize inner) const;

    QLayoutItem *board_ = nullptr;
    QLayoutItem *frames_ = nullptr;
    int framesWidth_ = 0;
};

} // namespace tavrix
