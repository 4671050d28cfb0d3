// What moves with the mouse, or by itself.
#include "gallery/GalleryPages.h"
#include "ui/ParticleCanvas.h"
#include "ui/SidebarGlow.h"
#include "ui/SurfaceFrame.h"
#include "ui/Theme.h"
#include "ui/TiltCard.h"

#include <QLabel>
#include <QMouseEvent>
#include <QTimer>
#include <QVBoxLayout>
#include <chrono>

namespace gallery {

namespace {

using namespace std::chrono_literals;

// What the owner of a sidebar glow does: tells it where the mouse is, and whether it is there at all.
class LitPanel : public SurfaceFrame
{
public:
    explicit LitPanel(QWidget *parent)
        : SurfaceFrame(parent)
        , glow(new SidebarGlow(this))
    {
        setObjectName(QStringLiteral("sidebar"));
        setMouseTracking(true);
        glow->setAccentColor(theme::initialAccent());
    }

protected:
    void enterEvent(QEnterEvent *event) override
    {
        glow->setCursorPos(event->position());
        glow->setActive(true);
    }
    void leaveEvent(QEvent * /*event*/) override { glow->setActive(false); }
    void mouseMoveEvent(QMouseEvent *event) override { glow->setCursorPos(event->position()); }
    void resizeEvent(QResizeEvent * /*event*/) override { glow->setGeometry(rect()); }

private:
    SidebarGlow *glow;
};

} // namespace

QWidget *createTiltCard(QWidget *parent)
{
    QVBoxLayout *layout = createPage(parent);
    QWidget *page = layout->parentWidget();
    auto *card = new TiltCard(page);
    auto *content = new QLabel(QStringLiteral("Drifts towards the mouse"));
    content->setAlignment(Qt::AlignCenter);
    content->setStyleSheet(QStringLiteral("background: rgb(20, 44, 84); border-radius: 8px;"));
    card->setContent(content);
    card->setFixedSize(260, 160);
    layout->addWidget(card, 0, Qt::AlignCenter);
    return page;
}

QWidget *createSidebarGlow(QWidget *parent)
{
    QVBoxLayout *layout = createPage(parent);
    QWidget *page = layout->parentWidget();
    layout->addWidget(new LitPanel(page));
    return page;
}

QWidget *createParticles(QWidget *parent)
{
    QVBoxLayout *layout = createPage(parent);
    QWidget *page = layout->parentWidget();
    auto *canvas = new ParticleCanvas(page);
    canvas->accentColor = theme::initialAccent();
    layout->addWidget(canvas);
    auto *timer = new QTimer(canvas);
    QObject::connect(timer, &QTimer::timeout, canvas, [canvas] {
        canvas->advance();
        canvas->update();
    });
    timer->start(16ms);
    return page;
}

} // namespace gallery
