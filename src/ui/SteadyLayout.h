// A column that is laid out anew only when something in it needs another room than before.
#pragma once

#include <QList>
#include <QVBoxLayout>

// Every new text of a label invalidates its layout, and with that the layouts of all widgets around it, which place everything
// where it already was. That alone makes the toolkit throw away what is kept of the pictures of the widgets with graphics
// effects on the way. Here a text that takes as much room as the one before goes unnoticed. The stretch factors of a grid inside
// are to be set before it is shown. GUI thread.
class SteadyLayout : public QVBoxLayout
{
    Q_OBJECT

public:
    using QVBoxLayout::QVBoxLayout;

    void invalidate() override;
    void setGeometry(const QRect &rect) override;

private:
    struct Room
    {
        const QLayoutItem *item = nullptr; // only compared
        bool isEmpty = true;
        Qt::Alignment alignment;
        Qt::Orientations expanding;
        QSize hint;
        QSize smallest;
        QSize largest;
        int height = -1; // for the item's present width; below 0: does not depend on it

        bool operator==(const Room &) const = default;
    };

    static Room roomFor(const QLayoutItem &item);
    static void appendRooms(const QLayout &layout, QList<Room> &rooms);
    static void appendSettings(const QLayout &layout, QList<int> &values);
    QList<int> settings() const;
    bool isAsLaidOut() const;

    QList<Room> laidOut; // of all items and the items within them; empty: to be laid out
    QList<int> laidOutWith;
};
