#include "pcconfig/ValueLabel.h"

#include <QFocusEvent>
#include <QPainter>
#include <QStyle>

namespace {

constexpr qsizetype kLongestText = 4096;
constexpr int kExcessiveWidth = 200; // px to ask for; the height follows from what it gets
constexpr int kWrapAnywhere = Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWrapAnywhere;

} // namespace

ValueLabel::ValueLabel(const QString &value, QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    showValue(value);
}

void ValueLabel::showValue(const QString &value)
{
    setText(value);
    if (isExcessive()) {
        setTextInteractionFlags(Qt::NoTextInteraction);
        return;
    }
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFocusPolicy(Qt::StrongFocus);
}

bool ValueLabel::isExcessive() const
{
    return text().size() > kLongestText;
}

QString ValueLabel::beginning() const
{
    return text().left(kLongestText) + QChar(0x2026);
}

QSize ValueLabel::sizeHint() const
{
    return isExcessive() ? QSize(kExcessiveWidth, heightForWidth(kExcessiveWidth))
                         : QLabel::sizeHint();
}

QSize ValueLabel::minimumSizeHint() const
{
    return isExcessive() ? sizeHint() : QLabel::minimumSizeHint();
}

int ValueLabel::heightForWidth(int width) const
{
    if (!isExcessive()) {
        return QLabel::heightForWidth(width);
    }
    const QRect room(0, 0, width, QWIDGETSIZE_MAX);
    return fontMetrics().boundingRect(room, kWrapAnywhere, beginning()).height();
}

void ValueLabel::paintEvent(QPaintEvent *event)
{
    if (!isExcessive()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    style()->drawItemText(
        &painter, rect(), kWrapAnywhere, palette(), isEnabled(), beginning(), foregroundRole());
}

void ValueLabel::focusInEvent(QFocusEvent *event)
{
    QLabel::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) {
        setSelection(0, static_cast<int>(text().size())); // shows where the focus is
    }
}
