#include "ui/ReadableBar.h"

#include "ui/Theme.h"

#include <QImage>
#include <QStyleOptionProgressBar>
#include <QStylePainter>

ReadableBar::ReadableBar(QWidget *parent)
    : QProgressBar(parent)
{ }

void ReadableBar::paintEvent(QPaintEvent * /*event*/)
{
    QStyleOptionProgressBar option;
    initStyleOption(&option);
    QStylePainter painter(this);
    option.textVisible = false;
    painter.drawControl(QStyle::CE_ProgressBar, option);
    if (isTextVisible()) {
        painter.setPen(QPen(QBrush(textColors(option)), 0));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, option.text);
    }
}

// One row of pixels, as wide as the bar: the colour that the text has there.
QImage ReadableBar::textColors(const QStyleOptionProgressBar &option) const
{
    QImage behind(size(), QImage::Format_ARGB32_Premultiplied);
    behind.fill(palette().color(QPalette::Window));
    QPainter painter(&behind);
    style()->drawControl(QStyle::CE_ProgressBar, &option, &painter, this);
    painter.end();

    QImage colors(width(), 1, QImage::Format_ARGB32_Premultiplied);
    for (int x = 0; x < colors.width(); ++x) {
        colors.setPixelColor(x, 0, theme::readableOn(behind.pixelColor(x, height() / 2)));
    }
    return colors;
}
