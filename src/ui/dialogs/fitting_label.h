#pragma once

// A one-line label that never asks for more width than the layout gives it:
// a text too long for its room is drawn in a smaller font, and cut short
// with an ellipsis only below a readable size. text() is always the whole
// text, and always plain: it shows player names, which may come from another
// copy of the program, and markup in a name is shown as typed.

#include <QLabel>

class QTextLayout;

namespace tavrix {

class FittingLabel : public QLabel {
    Q_OBJECT

public:
    explicit FittingLabel(QWidget *parent = nullptr) : FittingLabel(QString(), parent) {}
    explicit FittingLabel(const QString &text, QWidget *parent = nullptr) : QLabel(text, parent)
    {
        setTextFormat(Qt::PlainText);
    }

    QSize minimumSizeHint() const override;
    // The font the text is drawn in within `width` pixels, and what is drawn.
    QFont fittedFont(int width) const;
    QString shownText(int width) const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int textWidth() const;
};

} // namespace tavrix

namespace tavrix {

// A label of plain text that wraps at word boundaries, and inside a word
// only when the word alone is wider than the line (a long name), so that it
// never asks for more width than a few characters.
class WrappingLabel : public QLabel {
    Q_OBJECT

public:
    explicit WrappingLabel(QWidget *parent = nullptr) : QLabel(parent) { setTextFormat(Qt::PlainText); }

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    // Lays the text out in `width` pixels; the height it takes.
    qreal layOut(QTextLayout &layout, int width) const;
    int frameExtra() const { return 2 * (margin() + frameWidth()); }
};

} // namespace tavrix
