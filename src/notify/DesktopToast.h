// One desktop notification: icon, bold title, wrapped message, coloured state line, close button.
#pragma once

#include <QPointer>
#include <QWidget>

class QBoxLayout;
class QLabel;
class QPropertyAnimation;
class QPushButton;

// A frameless translucent window above all others, 330 px wide and as high as its content. It never becomes the active
// window and never takes the keyboard focus, not even when it is clicked. It only asks to be closed: whoever shows it
// hides and deletes it, and may be asked more than once (the button during the fade-out, for instance). All texts are
// shown as typed, never as markup. GUI thread.
class DesktopToast : public QWidget
{
    Q_OBJECT

public:
    explicit DesktopToast(QWidget *parent = nullptr);

    // Fills the toast and sizes it. `success` chooses between the apply icon with a green state line and the warning
    // icon with a red one.
    void setPayload(const QString &title, const QString &text, const QString &state, bool success);

    // Shows the toast at `from` (global), and slides it to `to` while it fades in; both take 200 ms. Where clients
    // cannot place their windows (Wayland) it appears where the desktop puts it.
    void animateShow(const QPoint &from, const QPoint &to);

    // Fades out from the present opacity in 170 ms, then asks to be closed.
    void animateHide();

    bool hasFadedOut() const { return isFadedOut; }

    // Stands at `place` (global) from now on: a slide that still runs ends here.
    void settleAt(const QPoint &place);

    // What the content needs at the fixed width.
    QSize sizeHint() const override;

signals:
    void closeRequested(DesktopToast *toast);

protected:
    void paintEvent(QPaintEvent *event) override;

    // Closing the window by means of the desktop counts as a request, too.
    void closeEvent(QCloseEvent *event) override;

private:
    void setUpWindow();
    void setUpLabels();
    void setUpCloseButton();
    void setUpLayout();
    QBoxLayout *createHeader() const;
    void refuseActivation();

    // Children of this widget.
    QLabel *iconLabel;
    QLabel *titleLabel;
    QLabel *textLabel;
    QLabel *stateLabel;
    QPushButton *closeButton;

    bool isFadedOut = false;
    QPointer<QPropertyAnimation> slide; // null unless it runs
};
