#include "ui/ElidedLabel.h"

#include <QHelpEvent>
#include <QStyleOption>
#include <QStylePainter>
#include <QToolTip>

ElidedLabel::ElidedLabel(const QString &text, QWidget *parent)
    : QLabel(text, parent)
{
    setTextFormat(Qt::PlainText);
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {0, QLabel::minimumSizeHint().height()};
}

QString ElidedLabel::visibleText() const
{
    return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
}

// Tool tips guess whether they are given markup, so this one is given some, with the text escaped. It belongs to no
// widget: the style sheet would take its background.
bool ElidedLabel::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip || visibleText() == text()) {
        return QLabel::event(event);
    }
    const auto *help = static_cast<QHelpEvent *>(event); // by its type
    QToolTip::showText(help->globalPos(),
                       QStringLiteral("<p>") + text().toHtmlEscaped() + QStringLiteral("</p>"));
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent * /*event*/)
{
    QStylePainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    const int place = static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment()));
    painter.drawItemText(contentsRect(),
                         place | Qt::TextSingleLine,
                         option.palette,
                         isEnabled(),
                         visibleText(),
                         foregroundRole());
}
