#include "ui/SurfaceFrame.h"

#include <QEvent>

bool SurfaceFrame::event(QEvent *event)
{
    const bool handled = QFrame::event(event);
    if (event->type() == QEvent::ContentsRectChange && !contentsMargins().isNull()) {
        setContentsMargins(0, 0, 0, 0);
    }
    return handled;
}
