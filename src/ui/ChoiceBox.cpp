#include "ui/ChoiceBox.h"

#include <QPainter>
#include <QPolygonF>
#include <QStyleOptionComboBox>
#include <QStyledItemDelegate>

namespace {

constexpr qreal kArrowWidth = 10;
constexpr qreal kArrowHeight = 5;
constexpr qreal kLineWidth = 1.5;
constexpr int kRowHeight = 26; // px, at least

// The default one paints the items of a menu in some styles, and makes them as low as the font allows.
class RowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return QStyledItemDelegate::sizeHint(option, index).expandedTo(QSize(0, kRowHeight));
    }
};

} // namespace

ChoiceBox::ChoiceBox(QWidget *parent)
    : PageControl(parent)
{
    setItemDelegate(new RowDelegate(this));
}

void ChoiceBox::paintEvent(QPaintEvent *event)
{
    PageControl::paintEvent(event);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRectF button =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, this);
    const QPointF tip = button.center() + QPointF(0, kArrowHeight / 2);
    const QPointF toLeft(-kArrowWidth / 2, -kArrowHeight);
    const QPointF toRight(kArrowWidth / 2, -kArrowHeight);

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::ButtonText), kLineWidth));
    painter.drawPolyline(QPolygonF({tip + toLeft, tip, tip + toRight}));
}
