// Pages of the stack: cards, one below the other.
#pragma once

#include <QScrollArea>

class QVBoxLayout;

// Gives the widget a layout for the cards of a page: no margins, 16 px between them. For pages whose cards fit in
// whatever room they get.
QVBoxLayout *createCardLayout(QWidget *page);

// A page whose content scrolls when it is taller than the room it gets. The window keeps its size whatever its pages hold:
// the content's minimum size stops here. Frameless and transparent, so that nothing of it is seen until a scroll bar is
// needed.
class ScrollPage : public QScrollArea
{
    Q_OBJECT

public:
    explicit ScrollPage(QWidget *parent);

    // Where the page's cards go: see createCardLayout().
    QVBoxLayout *contentLayout() const;

    QSize minimumSizeHint() const override; // none: see above
};
