#include "ui/ScrollPage.h"

#include <QVBoxLayout>

namespace {

constexpr int kCardSpacing = 16;

} // namespace

QVBoxLayout *createCardLayout(QWidget *page)
{
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kCardSpacing);
    return layout;
}

ScrollPage::ScrollPage(QWidget *parent)
    : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);

    auto *content = new QWidget(this);
    createCardLayout(content);
    setWidget(content);
    content->setAutoFillBackground(false); // setWidget() switched it on
    viewport()->setAutoFillBackground(false);
}

QVBoxLayout *ScrollPage::contentLayout() const
{
    return qobject_cast<QVBoxLayout *>(widget()->layout());
}

QSize ScrollPage::minimumSizeHint() const
{
    return {0, 0};
}
