#include "notify/DesktopToast.h"

#include "notify/ToastInput.h"
#include "ui/TestInput.h"

#include <QAccessible>
#include <QBoxLayout>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStyle>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <chrono>

using namespace std::chrono_literals;
using testinput::animationOf;
using testinput::isRunning;
using toastinput::closeButton;
using toastinput::label;

namespace {

const QString kLongText =
    QStringLiteral("Removed 128 entries from the temporary folders; some were in use and have "
                   "been left alone, because the programs that opened them still need them. ")
        .repeated(3);

void fill(DesktopToast &toast, const QString &text = QStringLiteral("Text"), bool success = true)
{
    toast.setPayload(QStringLiteral("Title"), text, QStringLiteral("State"), success);
}

QImage picture(DesktopToast &toast)
{
    return toast.grab().toImage().convertToFormat(QImage::Format_ARGB32);
}

int distance(const QColor &one, const QColor &other)
{
    return std::abs(one.red() - other.red()) + std::abs(one.green() - other.green())
        + std::abs(one.blue() - other.blue());
}

} // namespace

class DesktopToastTest : public QObject
{
    Q_OBJECT

private slots:
    void window()
    {
        const DesktopToast toast;
        QCOMPARE(QByteArray(toast.metaObject()->className()), QByteArray("DesktopToast"));
        QCOMPARE(toast.objectName(), QStringLiteral("desktopToast"));
        QVERIFY(toast.parentWidget() == nullptr);
        QVERIFY(toast.isWindow());
        QVERIFY(toast.isHidden());
        const auto wanted = Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
        QCOMPARE(toast.windowFlags() & ~Qt::WindowFlags(Qt::WindowFullscreenButtonHint), wanted);
        QVERIFY(toast.testAttribute(Qt::WA_TranslucentBackground));
        QVERIFY(toast.testAttribute(Qt::WA_ShowWithoutActivating));
        QVERIFY(!toast.testAttribute(Qt::WA_DeleteOnClose));
        QCOMPARE(toast.focusPolicy(), Qt::NoFocus);
        QCOMPARE(toast.minimumWidth(), 330);
        QCOMPARE(toast.maximumWidth(), 330);
    }

    void styleSheetOfTheToast()
    {
        const DesktopToast toast;
        QCOMPARE(toast.styleSheet(),
                 QStringLiteral(
                     "QWidget#desktopToast{background:rgba(7,16,32,225);border:1px solid "
                     "rgba(165,205,255,180);border-radius:12px;}QLabel#toastTitle{font-weight:700;"
                     "color:#eef7ff;}QLabel#toastText{color:#d3e8ff;}QLabel#toastState{"
                     "font-weight:600;color:#91beff;}QPushButton#toastClose{background:"
                     "rgba(255,255,255,24);border:1px solid rgba(210,228,255,120);border-radius:"
                     "4px;color:#fff;}QPushButton#toastClose:hover{background:"
                     "rgba(255,255,255,42);}"));
    }

    void parts()
    {
        const DesktopToast toast;
        const auto labels = toast.findChildren<QLabel *>(QString(), Qt::FindDirectChildrenOnly);
        QCOMPARE(labels.size(), 4);
        QVERIFY(labels.at(0)->objectName().isEmpty());
        QCOMPARE(labels.at(0)->minimumSize(), QSize(18, 18));
        QCOMPARE(labels.at(0)->maximumSize(), QSize(18, 18));
        QCOMPARE(labels.at(1)->objectName(), QStringLiteral("toastTitle"));
        QCOMPARE(labels.at(2)->objectName(), QStringLiteral("toastText"));
        QCOMPARE(labels.at(3)->objectName(), QStringLiteral("toastState"));
        QVERIFY(!labels.at(1)->wordWrap());
        QVERIFY(labels.at(2)->wordWrap());
        QVERIFY(!labels.at(3)->wordWrap());
        const QPushButton *button = closeButton(&toast);
        QCOMPARE(button->parentWidget(), &toast);
        QCOMPARE(button->text(), QStringLiteral("x"));
        QCOMPARE(button->minimumSize(), QSize(20, 20));
        QCOMPARE(button->maximumSize(), QSize(20, 20));
        QCOMPARE(button->cursor().shape(), Qt::PointingHandCursor);
        QCOMPARE(button->focusPolicy(), Qt::NoFocus);
    }

    void rows()
    {
        const DesktopToast toast;
        const auto *rows = qobject_cast<QBoxLayout *>(toast.layout());
        QCOMPARE(rows->direction(), QBoxLayout::TopToBottom);
        QCOMPARE(rows->contentsMargins(), QMargins(12, 10, 12, 10));
        QCOMPARE(rows->spacing(), 6);
        QCOMPARE(rows->count(), 3);
        QCOMPARE(rows->itemAt(1)->widget(), label(&toast, "toastText"));
        QCOMPARE(rows->itemAt(2)->widget(), label(&toast, "toastState"));
        const auto *header = qobject_cast<QBoxLayout *>(rows->itemAt(0)->layout());
        QCOMPARE(header->direction(), QBoxLayout::LeftToRight);
        QCOMPARE(header->spacing(), 8);
        QCOMPARE(header->count(), 3);
        QCOMPARE(header->itemAt(0)->alignment(), Qt::AlignTop);
        QCOMPARE(header->itemAt(1)->widget(), label(&toast, "toastTitle"));
        QCOMPARE(header->itemAt(2)->widget(), closeButton(&toast));
        QCOMPARE(header->itemAt(2)->alignment(), Qt::AlignTop);
        QCOMPARE(header->stretch(0), 0);
        QCOMPARE(header->stretch(1), 1);
        QCOMPARE(header->stretch(2), 0);
        for (int row = 0; row < 3; ++row) {
            QCOMPARE(rows->stretch(row), 0);
        }
    }

    void payload_data()
    {
        QTest::addColumn<bool>("success");
        QTest::addColumn<QStyle::StandardPixmap>("icon");
        QTest::addColumn<QString>("styleSheet");
        QTest::addColumn<QColor>("color");
        QTest::newRow("success") << true << QStyle::SP_DialogApplyButton
                                 << QStringLiteral("color:#8ff8c0;") << QColor(0x8f, 0xf8, 0xc0);
        QTest::newRow("failure") << false << QStyle::SP_MessageBoxWarning
                                 << QStringLiteral("color:#ff9ca3;") << QColor(0xff, 0x9c, 0xa3);
    }

    void payload()
    {
        QFETCH(bool, success);
        QFETCH(QStyle::StandardPixmap, icon);
        DesktopToast toast;
        fill(toast, QStringLiteral("Other"), !success);
        toast.setPayload(
            QStringLiteral("Clean"), QStringLiteral("Temp"), QStringLiteral("Now"), success);
        QCOMPARE(label(&toast, "toastTitle")->text(), QStringLiteral("Clean"));
        QCOMPARE(label(&toast, "toastText")->text(), QStringLiteral("Temp"));
        QCOMPARE(label(&toast, "toastState")->text(), QStringLiteral("Now"));
        QTEST(label(&toast, "toastState")->styleSheet(), "styleSheet");
        const auto *iconLabel = toast.findChild<QLabel *>(QString(), Qt::FindDirectChildrenOnly);
        const QPixmap wanted =
            toast.style()->standardIcon(icon).pixmap(QSize(16, 16), QIcon::Normal, QIcon::Off);
        QVERIFY(!wanted.isNull());
        QCOMPARE(iconLabel->pixmap(Qt::ReturnByValue).toImage(), wanted.toImage());
        QVERIFY(wanted.deviceIndependentSize().width() <= 16);
        toast.show();
        QTEST(label(&toast, "toastState")->palette().color(QPalette::WindowText), "color");
    }

    void sizeFollowsTheContent_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("word") << QStringLiteral("Done");
        QTest::newRow("half a line") << QStringLiteral("Temporary files deleted");
        QTest::newRow("two lines") << kLongText.left(70);
        QTest::newRow("many lines") << kLongText;
        QTest::newRow("line breaks") << QStringLiteral("one\ntwo\nthree\nfour");
        QTest::newRow("one endless word") << QString(200, QLatin1Char('W'));
    }

    // A wrapping label's own hint is for another width; the height must be the one that 330 px need.
    void sizeFollowsTheContent()
    {
        QFETCH(QString, text);
        DesktopToast toast;
        fill(toast, text);
        const QSize before = toast.size();
        QCOMPARE(before, toast.sizeHint());
        QCOMPARE(before.width(), 330);
        toast.show();
        QCOMPARE(toast.size(), before);
        const QLabel *textLabel = label(&toast, "toastText");
        QCOMPARE(textLabel->width(), 306);
        QVERIFY(textLabel->height() >= textLabel->heightForWidth(306)); // -1 without a text
        QVERIFY(text.isEmpty() || textLabel->height() == textLabel->heightForWidth(306));
        QCOMPARE(label(&toast, "toastState")->geometry().bottom(), toast.height() - 10 - 1);
    }

    void growsAndShrinks()
    {
        DesktopToast toast;
        fill(toast);
        const int small = toast.height();
        fill(toast, kLongText);
        QVERIFY(toast.height() > small + 4 * toast.fontMetrics().height());
        fill(toast);
        QCOMPARE(toast.height(), small);
    }

    void longTitleStaysOnItsLine()
    {
        DesktopToast toast;
        fill(toast);
        const QSize plain = toast.size();
        toast.setPayload(kLongText, QStringLiteral("Text"), kLongText, true);
        toast.show();
        QCOMPARE(toast.size(), plain);
        QCOMPARE(toast.sizeHint(), plain);
        QCOMPARE(closeButton(&toast)->geometry(), QRect(330 - 12 - 20, 10, 20, 20));
        QVERIFY(label(&toast, "toastTitle")->geometry().right() < closeButton(&toast)->x());
    }

    void markupIsShownAsTyped_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("bold") << QStringLiteral("<b>bold</b>");
        QTest::newRow("image") << QStringLiteral("<img src='nowhere.png' width=900 height=900>");
        QTest::newRow("link") << QStringLiteral("<a href=\"x\">&amp; &Save</a><br>");
    }

    void markupIsShownAsTyped()
    {
        QFETCH(QString, text);
        DesktopToast toast;
        toast.setPayload(text, text, text, true);
        for (const char *name : {"toastTitle", "toastText", "toastState"}) {
            QCOMPARE(label(&toast, name)->textFormat(), Qt::PlainText);
            QCOMPARE(label(&toast, name)->text(), text);
        }
    }

    void bodyIsRoundedAndTranslucent()
    {
        DesktopToast toast;
        fill(toast);
        toast.show();
        const QImage image = picture(toast);
        const qreal scale = image.devicePixelRatio();
        const QSize size = image.size();
        QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
        QCOMPARE(image.pixelColor(size.width() - 1, size.height() - 1).alpha(), 0);
        const QColor body = image.pixelColor(QPoint(6, toast.height() / 2) * scale);
        QCOMPARE(body.alpha(), 225);
        QVERIFY(distance(body, QColor(7, 16, 32)) <= 6);
        const QColor rim = image.pixelColor(size.width() / 2, 0);
        QVERIFY(rim.alpha() >= 180);
        QVERIFY(rim.blue() > 150);
    }

    // The cross must have room: some ink in the middle, none that the border cuts off.
    void closeButtonShowsItsText()
    {
        DesktopToast toast;
        fill(toast);
        toast.show();
        const auto inkOf = [&toast](const QString &text) {
            closeButton(&toast)->setText(text);
            return closeButton(&toast)->grab().toImage().convertToFormat(QImage::Format_ARGB32);
        };
        const QImage blank = inkOf(QString());
        const QImage crossed = inkOf(QStringLiteral("x"));
        QRect ink;
        for (int y = 0; y < blank.height(); ++y) {
            for (int x = 0; x < blank.width(); ++x) {
                if (blank.pixelColor(x, y) != crossed.pixelColor(x, y)) {
                    ink |= QRect(x, y, 1, 1);
                }
            }
        }
        const qreal scale = blank.devicePixelRatio();
        QVERIFY(ink.width() >= 4 * scale && ink.height() >= 4 * scale);
        QVERIFY(blank.rect().adjusted(3, 3, -3, -3).contains(ink));
        QVERIFY(std::abs(ink.center().x() - blank.rect().center().x()) <= 2 * scale);
    }

    void showSlidesAndFadesIn()
    {
        DesktopToast toast;
        fill(toast);
        toast.animateShow(QPoint(100, 50), QPoint(100, 72));
        QVERIFY(toast.isVisible());
        QCOMPARE(toast.pos(), QPoint(100, 50));
        QCOMPARE(toast.windowOpacity(), 0.0);
        QCOMPARE(toast.findChildren<QAbstractAnimation *>().size(), 2);
        for (const char *property : {"pos", "windowOpacity"}) {
            const auto *animation = animationOf(&toast, property);
            QCOMPARE(animation->duration(), 200);
            QCOMPARE(animation->easingCurve().type(), QEasingCurve::Linear);
            QCOMPARE(animation->parent(), &toast);
            QCOMPARE(animation->state(), QAbstractAnimation::Running);
        }
        QCOMPARE(animationOf(&toast, "pos")->startValue().toPoint(), QPoint(100, 50));
        QCOMPARE(animationOf(&toast, "pos")->endValue().toPoint(), QPoint(100, 72));
        QCOMPARE(animationOf(&toast, "windowOpacity")->startValue().toDouble(), 0.0);
        QCOMPARE(animationOf(&toast, "windowOpacity")->endValue().toDouble(), 1.0);
        QTRY_VERIFY(toast.findChildren<QAbstractAnimation *>().isEmpty());
        QCOMPARE(toast.pos(), QPoint(100, 72));
        QCOMPARE(toast.windowOpacity(), 1.0);
    }

    void settlingEndsTheSlideButNotTheFade()
    {
        DesktopToast toast;
        fill(toast);
        toast.animateShow(QPoint(100, 50), QPoint(100, 72));
        toast.settleAt(QPoint(10, 20));
        QCOMPARE(toast.pos(), QPoint(10, 20));
        QVERIFY(!isRunning(&toast, "pos"));
        QTRY_COMPARE(toast.windowOpacity(), 1.0);
        QCOMPARE(toast.pos(), QPoint(10, 20));
        toast.settleAt(QPoint(30, 40));
        QCOMPARE(toast.pos(), QPoint(30, 40));
    }

    void hideFadesOutAndThenAsks()
    {
        DesktopToast toast;
        fill(toast);
        toast.show();
        toast.setWindowOpacity(0.8);
        const double start = toast.windowOpacity();
        QSignalSpy asked(&toast, &DesktopToast::closeRequested);
        toast.animateHide();
        const auto *fade = animationOf(&toast, "windowOpacity");
        QCOMPARE(fade->duration(), 170);
        QCOMPARE(fade->easingCurve().type(), QEasingCurve::Linear);
        QCOMPARE(fade->startValue().toDouble(), start);
        QCOMPARE(fade->endValue().toDouble(), 0.0);
        QCOMPARE(fade->parent(), &toast);
        QCOMPARE(asked.size(), 0);
        QTRY_COMPARE(asked.size(), 1);
        QCOMPARE(asked.at(0).at(0).value<DesktopToast *>(), &toast);
        QCOMPARE(toast.windowOpacity(), 0.0);
        QVERIFY(toast.isVisible()); // hiding is up to the one who is asked
    }

    void closeButtonAsksAtOnce()
    {
        DesktopToast toast;
        fill(toast);
        toast.show();
        QSignalSpy asked(&toast, &DesktopToast::closeRequested);
        QTest::mouseClick(closeButton(&toast), Qt::LeftButton);
        QCOMPARE(asked.size(), 1);
        QCOMPARE(asked.at(0).at(0).value<DesktopToast *>(), &toast);
        QVERIFY(toast.findChildren<QAbstractAnimation *>().isEmpty());
        QVERIFY(toast.isVisible());
    }

    void closeButtonDuringTheFadeAsksTwice()
    {
        DesktopToast toast;
        fill(toast);
        toast.show();
        QSignalSpy asked(&toast, &DesktopToast::closeRequested);
        toast.animateHide();
        closeButton(&toast)->click();
        QCOMPARE(asked.size(), 1);
        QTRY_COMPARE(asked.size(), 2);
    }

    void closedByTheDesktop()
    {
        DesktopToast toast;
        fill(toast);
        toast.show();
        QSignalSpy asked(&toast, &DesktopToast::closeRequested);
        toast.close();
        QCOMPARE(asked.size(), 1);
    }

    void destroyedDuringItsAnimations()
    {
        auto *toast = new DesktopToast;
        fill(*toast);
        QSignalSpy asked(toast, &DesktopToast::closeRequested);
        toast->animateShow(QPoint(0, 0), QPoint(0, 22));
        toast->animateHide();
        delete toast;
        QCoreApplication::processEvents();
        QCOMPARE(asked.size(), 0);
    }

    // Whether the desktop leaves the focus alone is another test; here, what it is told.
    void refusesActivation()
    {
        DesktopToast toast;
        fill(toast);
        toast.animateShow(QPoint(0, 0), QPoint(0, 22));
        QVERIFY(toast.windowHandle()->property("_q_showWithoutActivating").toBool());
        QVERIFY(toast.windowHandle()->flags().testFlag(Qt::WindowDoesNotAcceptFocus));
    }

    void clicksMoveNoFocus()
    {
        DesktopToast toast;
        fill(toast);
        toast.animateShow(QPoint(0, 0), QPoint(0, 22));
        QLineEdit edit;
        edit.show();
        edit.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&edit));
        edit.setFocus();
        QTest::mouseClick(closeButton(&toast), Qt::LeftButton);
        QTest::mouseClick(&toast, Qt::LeftButton, {}, QPoint(100, 40));
        QTest::mouseClick(label(&toast, "toastText"), Qt::LeftButton);
        QCOMPARE(QApplication::focusWidget(), &edit);
        QVERIFY(toast.focusWidget() == nullptr);
    }

    void reachedByScreenReaders()
    {
        DesktopToast toast;
        toast.setPayload(
            QStringLiteral("Flush DNS"), QStringLiteral("Done."), QStringLiteral("State"), true);
        toast.show();
        QAccessibleInterface *button = QAccessible::queryAccessibleInterface(closeButton(&toast));
        QCOMPARE(button->text(QAccessible::Name), QStringLiteral("Close notification"));
        QCOMPARE(button->role(), QAccessible::PushButton);
        QSignalSpy asked(&toast, &DesktopToast::closeRequested);
        button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTRY_COMPARE(asked.size(), 1);
        QAccessibleInterface *window = QAccessible::queryAccessibleInterface(&toast);
        QCOMPARE(window->text(QAccessible::Name), QStringLiteral("Flush DNS"));
        QCOMPARE(window->text(QAccessible::Description), QStringLiteral("Done."));
        QVERIFY(window->indexOfChild(button) >= 0);
    }

    void doesNotKeepTheApplicationFromQuitting()
    {
        DesktopToast toast;
        fill(toast);
        QVERIFY(!toast.testAttribute(Qt::WA_QuitOnClose));
        toast.show();
        QWidget window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(toast.isVisible());
        QTimer::singleShot(0, &window, &QWidget::close);
        QTimer::singleShot(5s, &window, [] { QCoreApplication::exit(1); });
        QCOMPARE(QApplication::exec(), 0);
    }
};

QTEST_MAIN(DesktopToastTest)
#include "DesktopToastTest.moc"
