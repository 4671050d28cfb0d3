// What stands still until it is touched.
#include "gallery/GalleryPages.h"

#include "notify/DesktopToastManager.h"
#include "ui/ChoiceBox.h"
#include "ui/GlassCard.h"
#include "ui/Glow.h"
#include "ui/ReadableBar.h"
#include "ui/SwitchBox.h"
#include "ui/Theme.h"

#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

namespace gallery {

QVBoxLayout *createPage(QWidget *parent)
{
    auto *layout = new QVBoxLayout(new QWidget(parent));
    layout->setContentsMargins(24, 24, 24, 24);
    layout->setSpacing(24);
    return layout;
}

QWidget *createCards(QWidget *parent)
{
    QVBoxLayout *layout = createPage(parent);
    QWidget *page = layout->parentWidget();
    for (const auto &title : {QStringLiteral("A card"), QStringLiteral("Another one")}) {
        GlassCard *card = createGlassCard(page, title);
        card->layout()->addWidget(
            new QLabel(QStringLiteral("Brightens, with its shadow, under the mouse."), card));
        layout->addWidget(card);
    }
    layout->addStretch(1);
    return page;
}

QWidget *createButtons(QWidget *parent)
{
    QVBoxLayout *layout = createPage(parent);
    QWidget *page = layout->parentWidget();
    auto *plain = new QPushButton(QStringLiteral("Without a glow"), page);
    auto *glowing = new QPushButton(QStringLiteral("With the standard glow"), page);
    applyGlow(glowing, standardGlowColor(), kStandardGlowRadius);
    auto *disabled = new QPushButton(QStringLiteral("Disabled"), page);
    disabled->setEnabled(false);
    for (QPushButton *button : {plain, glowing, disabled}) {
        layout->addWidget(button);
    }
    layout->addStretch(1);
    return page;
}

QWidget *createControls(QWidget *parent)
{
    QVBoxLayout *layout = createPage(parent);
    QWidget *page = layout->parentWidget();
    auto *slider = new PageControl<QSlider>(page);
    slider->setOrientation(Qt::Horizontal);
    slider->setMinimumHeight(24);
    slider->setAccessibleName(QStringLiteral("A slider that glows while it is held"));
    applySliderInteractionGlow(slider, theme::initialAccent());
    auto *choice = new ChoiceBox(page);
    choice->addItems({QStringLiteral("One"), QStringLiteral("Two"), QStringLiteral("Three")});
    choice->setAccessibleName(QStringLiteral("A choice"));
    layout->addWidget(slider);
    layout->addWidget(new SwitchBox(QStringLiteral("A switch"), page));
    layout->addWidget(choice);
    layout->addStretch(1);
    return page;
}

QWidget *createBars(QWidget *parent)
{
    QVBoxLayout *layout = createPage(parent);
    QWidget *page = layout->parentWidget();
    for (const int percent : {0, 49, 52, 100}) {
        auto *bar = new ReadableBar(page);
        bar->setValue(percent);
        layout->addWidget(bar);
    }
    layout->addStretch(1);
    return page;
}

QWidget *createToasts(QWidget *parent)
{
    QVBoxLayout *layout = createPage(parent);
    QWidget *page = layout->parentWidget();
    auto *manager = new DesktopToastManager(page);
    const auto addButton = [=](const QString &text, const QString &state, bool success, bool goes) {
        auto *button = new QPushButton(text, page);
        layout->addWidget(button);
        QObject::connect(button, &QPushButton::clicked, manager, [=] {
            manager->showToast(text, QStringLiteral("What happened."), state, success, goes);
        });
    };
    addButton(QStringLiteral("A success"), QStringLiteral("Done [OK]"), true, true);
    addButton(QStringLiteral("A failure"), QStringLiteral("Failed [X]"), false, true);
    addButton(QStringLiteral("One that stays"), QStringLiteral("Running..."), true, false);
    layout->addStretch(1);
    return page;
}

} // namespace gallery
