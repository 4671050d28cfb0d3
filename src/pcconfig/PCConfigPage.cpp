#include "pcconfig/PCConfigPage.h"

#include "ui/GlassCard.h"
#include "ui/Glow.h"

#include <QVBoxLayout>

PCConfigPage::PCConfigPage(QWidget *parent)
    : QWidget(parent)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(createGlassCard(this, QStringLiteral("PC Config")));
    layout->addStretch(1);
}
