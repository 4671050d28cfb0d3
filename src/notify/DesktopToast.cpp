#include "notify/DesktopToast.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPropertyAnimation>
#include <QPushButton>
#include <QStyle>
#include <QStyleOption>
#include <QWindow>
#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr auto kShowDuration = 200ms;
constexpr auto kHideDuration = 170ms;

// px
constexpr int kToastWidth = 330;
constexpr QMargins kContentMargins(12, 10, 12, 10);
constexpr int kRowSpacing = 6;
constexpr int kHeaderSpacing = 8;
constexpr QSize kIconSize(16, 16);
constexpr QSize kIconLabelSize(18, 18);
constexpr QSize kCloseButtonSize(20, 20);

QString toastStyleSheet()
{
    return QStringLiteral("QWidget#desktopToast{background:rgba(7,16,32,225);"
                          "border:1px solid rgba(165,205,255,180);border-radius:12px;}"
                          "QLabel#toastTitle{font-weight:700;color:#eef7ff;}"
                          "QLabel#toastText{color:#d3e8ff;}"
                          "QLabel#toastState{font-weight:600;color:#91beff;}"
                          "QPushButton#toastClose{background:rgba(255,255,255,24);"
                          "border:1px solid rgba(210,228,255,120);border-radius:4px;color:#fff;}"
                          "QPushButton#toastClose:hover{background:rgba(255,255,255,42);}");
}

QString stateStyleSheet(bool success)
{
    return success ? QStringLiteral("color:#8ff8c0;") : QStringLiteral("color:#ff9ca3;");
}

QStyle::StandardPixmap iconOf(bool success)
{
    return success ? QStyle::SP_DialogApplyButton : QStyle::SP_MessageBoxWarning;
}

// Linear, child of the toast, deletes itself when it stops.
QPropertyAnimation *run(QWidget *toast,
                        const QByteArray &property,
                        std::chrono::milliseconds duration,
                        const QVariant &from,
                        const QVariant &to)
{
    auto *animation = new QPropertyAnimation(toast, property, toast);
    animation->setDuration(static_cast<int>(duration.count()));
    animation->setStartValue(from);
    animation->setEndValue(to);
    animation->start(QAbstractAnimation::DeleteWhenStopped);
    return animation;
}

} // namespace

DesktopToast::DesktopToast(QWidget *parent)
    : QWidget(parent)
    , iconLabel(new QLabel(this))
    , titleLabel(new QLabel(this))
    , textLabel(new QLabel(this))
    , stateLabel(new QLabel(this))
    , closeButton(new QPushButton(QStringLiteral("x"), this))
{
    setUpWindow();
    setUpLabels();
    setUpCloseButton();
    setUpLayout();
    setStyleSheet(toastStyleSheet());
}

void DesktopToast::setUpWindow()
{
    setObjectName(QStringLiteral("desktopToast"));
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    setFixedWidth(kToastWidth);
}

void DesktopToast::setUpLabels()
{
    titleLabel->setObjectName(QStringLiteral("toastTitle"));
    textLabel->setObjectName(QStringLiteral("toastText"));
    stateLabel->setObjectName(QStringLiteral("toastState"));
    for (QLabel *label : {titleLabel, textLabel, stateLabel}) {
        label->setTextFormat(Qt::PlainText);
    }
    textLabel->setWordWrap(true);
    // Single lines: one that is too long is cut off at the end and must not push the close button out.
    for (QLabel *label : {titleLabel, stateLabel}) {
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }
    iconLabel->setFixedSize(kIconLabelSize);
}

void DesktopToast::setUpCloseButton()
{
    closeButton->setObjectName(QStringLiteral("toastClose"));
    closeButton->setAccessibleName(QStringLiteral("Close notification"));
    closeButton->setFixedSize(kCloseButtonSize);
    closeButton->setCursor(Qt::PointingHandCursor);
    closeButton->setFocusPolicy(Qt::NoFocus);
    connect(closeButton, &QPushButton::clicked, this, [this] { emit closeRequested(this); });
}

void DesktopToast::setUpLayout()
{
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(kContentMargins);
    rows->setSpacing(kRowSpacing);
    rows->addLayout(createHeader());
    rows->addWidget(textLabel);
    rows->addWidget(stateLabel);
}

QBoxLayout *DesktopToast::createHeader() const
{
    auto *header = new QHBoxLayout;
    header->setSpacing(kHeaderSpacing);
    header->addWidget(iconLabel, 0, Qt::AlignTop);
    header->addWidget(titleLabel, 1);
    header->addWidget(closeButton, 0, Qt::AlignTop);
    return header;
}

void DesktopToast::setPayload(const QString &title,
                              const QString &text,
                              const QString &state,
                              bool success)
{
    titleLabel->setText(title);
    textLabel->setText(text);
    stateLabel->setText(state);
    stateLabel->setStyleSheet(stateStyleSheet(success));
    const QIcon icon = style()->standardIcon(iconOf(success));
    iconLabel->setPixmap(icon.pixmap(kIconSize, QIcon::Normal, QIcon::Off));
    setAccessibleName(title);
    setAccessibleDescription(text);
    adjustSize();
}

QSize DesktopToast::sizeHint() const
{
    // A wrapping label's own hint is for a width of its choice, and its height is wrong at ours.
    const bool wraps = layout()->hasHeightForWidth(); // not without a text
    return {kToastWidth,
            wraps ? layout()->totalHeightForWidth(kToastWidth)
                  : layout()->totalSizeHint().height()};
}

void DesktopToast::animateShow(const QPoint &from, const QPoint &to)
{
    move(from);
    setWindowOpacity(0.0);
    refuseActivation();
    show();
    slide = run(this, "pos", kShowDuration, from, to);
    run(this, "windowOpacity", kShowDuration, 0.0, 1.0);
}

void DesktopToast::animateHide()
{
    auto *fade = run(this, "windowOpacity", kHideDuration, windowOpacity(), 0.0);
    connect(fade, &QPropertyAnimation::finished, this, [this] {
        isFadedOut = true;
        emit closeRequested(this);
    });
}

void DesktopToast::settleAt(const QPoint &place)
{
    if (slide) {
        slide->stop();
    }
    move(place);
}

// A translucent window gets no background, not even one of a style sheet.
void DesktopToast::paintEvent(QPaintEvent * /*event*/)
{
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

void DesktopToast::closeEvent(QCloseEvent *event)
{
    QWidget::closeEvent(event);
    emit closeRequested(this);
}

// Being shown without activation is not enough: a click on the toast would still take the focus from the window that
// the user is typing in.
void DesktopToast::refuseActivation()
{
    create();
    if (QWindow *window = windowHandle()) {
        window->setFlag(Qt::WindowDoesNotAcceptFocus);
    }
}
