#include "monitor/ProcessWatcherWidget.h"

#include "ui/GlassCard.h"
#include "ui/Glow.h"
#include "ui/ScrollPage.h"

#include <QVBoxLayout>

ProcessWatcherWidget::ProcessWatcherWidget(QWidget *parent)
    : QWidget(parent)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *content = new ScrollPage(this);
    layout->addWidget(content);
    content->contentLayout()->addWidget(createGlassCard(content, QStringLiteral("Proc Watch")));
    content->contentLayout()->addStretch(1);
}
