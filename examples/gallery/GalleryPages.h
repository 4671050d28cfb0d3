// One function per widget: makes the page that shows it, as a child of `parent`.
#pragma once

class QVBoxLayout;
class QWidget;

namespace gallery {

QWidget *createCards(QWidget *parent);
QWidget *createButtons(QWidget *parent);
QWidget *createControls(QWidget *parent);
QWidget *createBars(QWidget *parent);
QWidget *createToasts(QWidget *parent);
QWidget *createTiltCard(QWidget *parent);
QWidget *createSidebarGlow(QWidget *parent);
QWidget *createParticles(QWidget *parent);
QWidget *createNavButton(QWidget *parent);
QWidget *createSidebar(QWidget *parent);

// An empty page, and the layout that its widgets go into.
QVBoxLayout *createPage(QWidget *parent);

} // namespace gallery
