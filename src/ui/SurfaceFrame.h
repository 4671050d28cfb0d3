// A frame whose border, drawn by the style sheet, takes no room from its layout.
#pragma once

#include <QFrame>

// A style sheet's border moves everything inside a QFrame inwards by its width. Where places are given from the frame's
// edge, as everywhere in this window, that would be too much: here the border is drawn over the margin. GUI thread.
class SurfaceFrame : public QFrame
{
public:
    using QFrame::QFrame;

protected:
    bool event(QEvent *event) override;
};
