#include "pcconfig/PCConfigPage.h"

#include "ui/GlassCard.h"
#include "ui/Glow.h"
#include "ui/ScrollPage.h"

#include <QVBoxLayout>

PCConfigPage::PCConfigPage(QWidget *parent)
    : QWidget(parent)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *content = new ScrollPage(this);
    layout->addWidget(content);
    content->contentLayout()->addWidget(createGlassCard(content, QStringLiteral("PC Config")));
    content->contentLayout()->addStretch(1);
}
