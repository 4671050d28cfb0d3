// One line of text from outside, however long it is.
#pragma once

#include <QLabel>

// Takes the width that it gets and never asks for more: what does not fit ends in an ellipsis, and the tool tip then
// shows all of it. Plain text only; text() is always the whole text. GUI thread.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    ElidedLabel(const QString &text, QWidget *parent);

    QSize minimumSizeHint() const override; // no width

    // What is seen of the text at the present size.
    QString visibleText() const;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};
