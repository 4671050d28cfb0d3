// What every control on a scrolling page needs, whatever kind of control it is.
#pragma once

#include <QWheelEvent>
#include <QWidget>

// A frame around the widget while it has the keyboard focus and the keyboard is what the focus was moved by. The style
// sheet leaves focus marks out.
void paintFocusFrame(QWidget *widget);

// The control shows when the keyboard is on it, and leaves the wheel to the page unless it has been picked: scrolling
// past a control must not change what it is set to. GUI thread.
template<class Control>
class PageControl : public Control
{
public:
    explicit PageControl(QWidget *parent)
        : Control(parent)
    {
        this->setFocusPolicy(Qt::StrongFocus); // not by the wheel
    }

protected:
    void paintEvent(QPaintEvent *event) override
    {
        Control::paintEvent(event);
        paintFocusFrame(this);
    }

    void wheelEvent(QWheelEvent *event) override
    {
        if (this->hasFocus()) {
            Control::wheelEvent(event);
        } else {
            event->ignore();
        }
    }
};
