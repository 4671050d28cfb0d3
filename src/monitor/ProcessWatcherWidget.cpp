#include "monitor/ProcessWatcherWidget.h"

#include "ui/GlassCard.h"
#include "ui/Glow.h"

#include <QVBoxLayout>

ProcessWatcherWidget::ProcessWatcherWidget(QWidget *parent)
    : QWidget(parent)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(createGlassCard(this, QStringLiteral("Proc Watch")));
    layout->addStretch(1);
}
