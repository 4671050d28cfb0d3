#include "gallery/Gallery.h"

#include "gallery/GalleryPages.h"
#include "ui/Theme.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QPainter>
#include <QStackedWidget>

namespace {

constexpr QSize kSize(900, 600);
constexpr int kListWidth = 170;
constexpr int kListSpacing = 4;

} // namespace

Gallery::Gallery()
    : names(new QListWidget(this))
    , pages(new QStackedWidget(this))
{
    setObjectName(QStringLiteral("rootSurface"));
    setWindowTitle(QStringLiteral("Veltra Widget Gallery"));
    resize(kSize);
    names->setFixedWidth(kListWidth);
    names->setSpacing(kListSpacing);
    names->setFrameShape(QFrame::NoFrame);
    names->setAccessibleName(QStringLiteral("Widgets"));
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(names);
    layout->addWidget(pages, 1);
    setupPages();
    connect(names, &QListWidget::currentRowChanged, pages, &QStackedWidget::setCurrentIndex);
    names->setCurrentRow(0);
    setStyleSheet(theme::styleSheet(theme::initialAccent()));
}

void Gallery::setupPages()
{
    add(QStringLiteral("Glass cards"), gallery::createCards(pages));
    add(QStringLiteral("Buttons"), gallery::createButtons(pages));
    add(QStringLiteral("Sliders and switches"), gallery::createControls(pages));
    add(QStringLiteral("Bars"), gallery::createBars(pages));
    add(QStringLiteral("Notifications"), gallery::createToasts(pages));
    add(QStringLiteral("Tilt card"), gallery::createTiltCard(pages));
    add(QStringLiteral("Sidebar glow"), gallery::createSidebarGlow(pages));
    add(QStringLiteral("Particles"), gallery::createParticles(pages));
    add(QStringLiteral("Navigation button"), gallery::createNavButton(pages));
    add(QStringLiteral("Sidebar"), gallery::createSidebar(pages));
}

void Gallery::add(const QString &name, QWidget *page) const
{
    names->addItem(name);
    pages->addWidget(page);
}

// Under a style sheet no widget inherits palette and font; see theme::adopt.
void Gallery::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    const QPalette palette = theme::palette(theme::initialAccent());
    theme::adopt(this, palette);
    const auto widgets = findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        widget->ensurePolished();
        theme::adopt(widget, palette);
    }
}

void Gallery::paintEvent(QPaintEvent * /*event*/)
{
    // The style sheet makes the root transparent.
    const QPalette palette = theme::palette(theme::initialAccent());
    QPainter(this).fillRect(rect(), palette.color(QPalette::Window));
}
