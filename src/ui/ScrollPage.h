// A page of the stack whose content scrolls when it is taller than the room it gets.
#pragma once

#include <QScrollArea>

class QVBoxLayout;

// The window keeps its size whatever its pages hold: the content's minimum size stops here. Frameless and transparent,
// so that nothing of it is seen until a scroll bar is needed.
class ScrollPage : public QScrollArea
{
    Q_OBJECT

public:
    explicit ScrollPage(QWidget *parent);

    // Where the page's cards go, top to bottom: no margins, spacing 16.
    QVBoxLayout *contentLayout() const;

    QSize minimumSizeHint() const override; // none: see above
};
