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
    return {&item,
            item.isEmpty(),
            item.alignment(),
            item.expandingDirections(),
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
void SteadyLayout::appendSettings(const QLayout &layout, QList<int> &values)
{
    const QMargins margins = layout.contentsMargins();
    values << margins.left() << margins.top() << margins.right() << margins.bottom()
           << layout.spacing();
    const auto *box = qobject_cast<const QBoxLayout *>(&layout);
    for (int i = 0; i < layout.count(); ++i) {
        values << (box != nullptr ? box->stretch(i) : 0);
        if (const QLayout *inner = layout.itemAt(i)->layout()) {
            appendSettings(*inner, values);
        }
    }
}

QList<int> SteadyLayout::settings() const
{
    QList<int> values;
    appendSettings(*this, values);
    if (const QWidget *widget = parentWidget()) {
        values << widget->layoutDirection();
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
