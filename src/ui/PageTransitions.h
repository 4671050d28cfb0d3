// Switching of a page stack, with a short entrance of the page that becomes visible.
#pragma once

#include <QObject>

class QStackedWidget;
class QWidget;

// Holds no state; everything that runs belongs to the page it runs on. GUI thread.
class PageTransitions : public QObject
{
    Q_OBJECT

public:
    explicit PageTransitions(QObject *parent = nullptr);

    // Makes `index` the current page and plays its entrance, also when it was current already. A null stack, or an index
    // that it does not have, does nothing.
    void switchTo(QStackedWidget *stack, int index);

    // Fades the page in and slides it 12 px from the right to its place, in 220 ms. Takes the place of the page's
    // graphics effect, and of an entrance that is still under way. Null does nothing.
    void animateIn(QWidget *page);
};
