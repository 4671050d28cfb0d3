#include "ui/SteadyLayout.h"

#include <QWidget>

void SteadyLayout::invalidate()
{
    if (isAsLaidOut()) {
        return;
    }
    laidOut.clear();
    QVBoxLayout::invalidate();
}

void SteadyLayout::setGeometry(const QRect &rect)
{
    QVBoxLayout::setGeometry(rect);
    laidOut.clear();
    appendRooms(*this, laidOut);
    laidOutWith = settings();
}

SteadyLayout::Room SteadyLayout::roomFor(const QLayoutItem &item)
{
    return {item.isEmpty(),
            item.alignment(),
            item.sizeHint(),
            item.minimumSize(),
            item.maximumSize(),
            item.hasHeightForWidth() ? item.heightForWidth(item.geometry().width()) : -1};
}

void SteadyLayout::appendRooms(const QLayout &layout, QList<Room> &rooms)
{
    for (int i = 0; i < layout.count(); ++i) {
        QLayoutItem &item = *layout.itemAt(i);
        rooms.append(roomFor(item));
        if (const QLayout *inner = item.layout()) {
            appendRooms(*inner, rooms);
        }
    }
}

// What the places of the items depend on besides the items.
QList<int> SteadyLayout::settings() const
{
    const QMargins margins = contentsMargins();
    QList<int> values{margins.left(), margins.top(), margins.right(), margins.bottom(), spacing()};
    if (const QWidget *widget = parentWidget()) {
        values.append(widget->layoutDirection());
    }
    for (int i = 0; i < count(); ++i) {
        values.append(stretch(i));
    }
    return values;
}

bool SteadyLayout::isAsLaidOut() const
{
    const QWidget *widget = parentWidget();
    const bool isSeen =
        widget != nullptr && widget->isVisible(); // only there it is worth the comparison
    if (!isSeen || laidOut.isEmpty() || laidOutWith != settings()) {
        return false;
    }
    QList<Room> rooms;
    appendRooms(*this, rooms);
    return rooms == laidOut;
}
