#include "ui/NavButton.h"

#include "ui/TestInput.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

using testinput::animationOf;
using testinput::isRunning;

namespace {

QIcon redIcon()
{
    QPixmap pixmap(18, 18);
    pixmap.fill(Qt::red);
    return QIcon(pixmap);
}

QImage picture(QWidget &widget)
{
    QImage image(widget.size(), QImage::Format_ARGB32);
    image.fill(Qt::black);
    widget.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

} // namespace

class NavButtonTest : public QObject
{
    Q_OBJECT

private slots:
    void startsAsDesigned()
    {
        const NavButton button(QStringLiteral("Logs"), redIcon(), nullptr);
        QVERIFY(button.hasMouseTracking());
        QCOMPARE(button.cursor().shape(), Qt::PointingHandCursor);
        QCOMPARE(button.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
        QCOMPARE(button.sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
        QCOMPARE(button.minimumHeight(), 54);
        QCOMPARE(button.accent(), QColor(102, 217, 255));
        QCOMPARE(button.sizeHint(), QSize(62, 54));
    }

    void animations_data()
    {
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<int>("duration");
        QTest::newRow("hover") << QByteArray("hoverStrength") << 150;
        QTest::newRow("press") << QByteArray("pressOffset") << 80;
        QTest::newRow("text") << QByteArray("textOpacity") << 160;
    }

    void animations()
    {
        QFETCH(QByteArray, property);
        const NavButton button(QStringLiteral("Logs"), redIcon(), nullptr);
        const auto *animation = animationOf(&button, property);
        QVERIFY(animation != nullptr);
        QTEST(animation->duration(), "duration");
        QCOMPARE(animation->easingCurve().type(), QEasingCurve::OutCubic);
        QCOMPARE(animation->parent(), &button);
    }

    void valuesAreClamped_data()
    {
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<double>("largest");
        QTest::newRow("hover") << QByteArray("hoverStrength") << 1.0;
        QTest::newRow("press") << QByteArray("pressOffset") << 2.0;
        QTest::newRow("text") << QByteArray("textOpacity") << 1.0;
    }

    void valuesAreClamped()
    {
        QFETCH(QByteArray, property);
        QFETCH(double, largest);
        NavButton button(QStringLiteral("Logs"), redIcon(), nullptr);
        button.setProperty(property, -0.5);
        QCOMPARE(button.property(property).toDouble(), 0.0);
        button.setProperty(property, largest + 3);
        QCOMPARE(button.property(property).toDouble(), largest);
        button.setProperty(property, largest / 2);
        QCOMPARE(button.property(property).toDouble(), largest / 2);
    }

    void hoverRunsUpAndDown()
    {
        NavButton button(QStringLiteral("Logs"), redIcon(), nullptr);
        testinput::enter(&button);
        QTRY_COMPARE(button.property("hoverStrength").toDouble(), 1.0);
        testinput::leave(&button);
        QCOMPARE(animationOf(&button, "pressOffset")->duration(), 100);
        QCOMPARE(animationOf(&button, "pressOffset")->endValue().toDouble(), 0.0);
        QTRY_COMPARE(button.property("hoverStrength").toDouble(), 0.0);
    }

    void clickNeedsReleaseInside()
    {
        NavButton button(QStringLiteral("Logs"), redIcon(), nullptr);
        button.resize(170, 54);
        QSignalSpy clicked(&button, &NavButton::clicked);
        QTest::mousePress(&button, Qt::LeftButton, {}, {20, 20});
        QCOMPARE(animationOf(&button, "pressOffset")->duration(), 70);
        QCOMPARE(animationOf(&button, "pressOffset")->endValue().toDouble(), 2.0);
        QCOMPARE(clicked.count(), 0);
        QTest::mouseRelease(&button, Qt::LeftButton, {}, {20, 20});
        QCOMPARE(animationOf(&button, "pressOffset")->duration(), 120);
        QCOMPARE(clicked.count(), 1);

        QTest::mousePress(&button, Qt::LeftButton, {}, {20, 20});
        QTest::mouseRelease(&button, Qt::LeftButton, {}, {20, 60});
        QCOMPARE(clicked.count(), 1);
        testinput::leave(&button);
        QTRY_COMPARE(button.property("pressOffset").toDouble(), 0.0);
    }

    void otherButtonsDoNothing()
    {
        NavButton button(QStringLiteral("Logs"), redIcon(), nullptr);
        button.resize(170, 54);
        QSignalSpy clicked(&button, &NavButton::clicked);
        for (const auto other : {Qt::RightButton, Qt::MiddleButton}) {
            QTest::mousePress(&button, other, {}, {20, 20});
            QVERIFY(!isRunning(&button, "pressOffset"));
            QTest::mouseRelease(&button, other, {}, {20, 20});
        }
        QCOMPARE(clicked.count(), 0);
        QCOMPARE(button.property("pressOffset").toDouble(), 0.0);
    }

    void expandingFadesTheLabel()
    {
        NavButton button(QStringLiteral("Logs"), redIcon(), nullptr);
        button.setExpanded(true);
        QCOMPARE(button.sizeHint(), QSize(170, 54));
        QVERIFY(isRunning(&button, "textOpacity"));
        QTRY_COMPARE(button.property("textOpacity").toDouble(), 1.0);
        QTRY_VERIFY(!isRunning(&button, "textOpacity"));
        button.setExpanded(true);
        QVERIFY(!isRunning(&button, "textOpacity"));
        button.setExpanded(false);
        QTRY_COMPARE(button.property("textOpacity").toDouble(), 0.0);
    }

    void interruptedAnimationsStartFromTheCurrentValue()
    {
        NavButton button(QStringLiteral("Logs"), redIcon(), nullptr);
        button.setHoverStrength(0.3);
        button.animateHover(1.0);
        QCOMPARE(animationOf(&button, "hoverStrength")->startValue().toDouble(), 0.3);
        button.setPressOffset(1.5);
        button.animatePress(0.0, 33);
        QCOMPARE(animationOf(&button, "pressOffset")->startValue().toDouble(), 1.5);
        QCOMPARE(animationOf(&button, "pressOffset")->duration(), 33);
    }

    void iconSitsWhereItShould_data()
    {
        QTest::addColumn<bool>("expanded");
        QTest::addColumn<int>("width");
        QTest::addColumn<QRect>("icon");
        QTest::newRow("collapsed") << false << 62 << QRect(22, 18, 18, 18);
        QTest::newRow("expanded") << true << 170 << QRect(20, 18, 18, 18);
    }

    void iconSitsWhereItShould()
    {
        QFETCH(bool, expanded);
        QFETCH(int, width);
        QFETCH(QRect, icon);
        NavButton button(QStringLiteral("Logs"), redIcon(), nullptr);
        button.resize(width, 54);
        button.setExpanded(expanded);
        button.setTextOpacity(0);
        const QImage image = picture(button);
        QRect red;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, y) == QColor(Qt::red)) {
                    red |= QRect(x, y, 1, 1);
                }
            }
        }
        QCOMPARE(red, icon);
    }

    void labelIsOnlyDrawnWhenVisible()
    {
        NavButton button(QStringLiteral("MMMM"), redIcon(), nullptr);
        button.resize(170, 54);
        button.setTextOpacity(0.0);
        const QImage without = picture(button);
        button.setTextOpacity(0.01);
        QCOMPARE(picture(button), without);
        button.setTextOpacity(1.0);
        const QImage with = picture(button);
        QVERIFY(with != without);
        const QRect left(46, 4, 5, 46); // the text begins at the left of its rectangle
        QVERIFY(with.copy(left) != without.copy(left));
    }

    void labelStaysBesideTheIconFromRightToLeft()
    {
        NavButton button(QStringLiteral("MM"), redIcon(), nullptr);
        button.resize(170, 54);
        button.setExpanded(true);
        button.setTextOpacity(1.0);
        const QImage leftToRight = picture(button);
        button.setLayoutDirection(Qt::RightToLeft);
        QCOMPARE(picture(button), leftToRight);
    }

    void stateChangesThePicture()
    {
        NavButton button(QStringLiteral("Logs"), redIcon(), nullptr);
        button.resize(62, 54);
        const QImage idle = picture(button);
        button.setActive(true);
        const QImage active = picture(button);
        QVERIFY(active != idle);
        button.setActive(false);
        QCOMPARE(picture(button), idle);
        button.setHoverStrength(1);
        QVERIFY(picture(button) != idle);
        button.setHoverStrength(0);
        button.setAccentColor(Qt::red);
        QVERIFY(picture(button) != idle);
    }

    void keyboardActivates_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<qsizetype>("clicks");
        QTest::newRow("space") << Qt::Key_Space << 1LL;
        QTest::newRow("return") << Qt::Key_Return << 1LL;
        QTest::newRow("enter") << Qt::Key_Enter << 1LL;
        QTest::newRow("letter") << Qt::Key_A << 0LL;
    }

    void keyboardActivates()
    {
        QFETCH(Qt::Key, key);
        NavButton button(QStringLiteral("Logs"), redIcon(), nullptr);
        QSignalSpy clicked(&button, &NavButton::clicked);
        QTest::keyClick(&button, key);
        QTEST(clicked.count(), "clicks");
        QTRY_COMPARE(button.property("pressOffset").toDouble(), 0.0);
    }

    void mouseDoesNotTakeTheFocus()
    {
        const NavButton button(QStringLiteral("Logs"), redIcon(), nullptr);
        QCOMPARE(button.focusPolicy(), Qt::TabFocus);
    }

    void focusIsVisible()
    {
        QWidget window;
        NavButton button(QStringLiteral("Logs"), redIcon(), &window);
        button.resize(62, 54);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        button.clearFocus();
        const QImage without = picture(button);
        button.setFocus(Qt::ActiveWindowFocusReason);
        QTRY_VERIFY(button.hasFocus());
        QCOMPARE(picture(button), without); // nobody has touched the keyboard
        button.clearFocus();
        button.setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(button.hasFocus());
        QVERIFY(picture(button) != without);
    }

    void screenReaderHearsNameRoleAndState()
    {
        NavButton button(QStringLiteral("Logs"), redIcon(), nullptr);
        QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(&button);
        QVERIFY(reader != nullptr);
        QCOMPARE(reader->text(QAccessible::Name), QStringLiteral("Logs"));
        QCOMPARE(reader->role(), QAccessible::PageTab);
        QVERIFY(reader->state().selectable);
        QVERIFY(reader->state().focusable);
        QVERIFY(!reader->state().selected);
        button.setActive(true);
        QVERIFY(reader->state().selected);
        QSignalSpy clicked(&button, &NavButton::clicked);
        QVERIFY(reader->actionInterface()->actionNames().contains(
            QAccessibleActionInterface::pressAction()));
        reader->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(clicked.count(), 1);
    }

    void screenReaderHearsOfTheKeysAndGivesTheFocus()
    {
        NavButton button(QStringLiteral("Logs"), redIcon(), nullptr);
        button.show();
        QApplication::setActiveWindow(&button);
        QVERIFY(QTest::qWaitForWindowActive(&button));
        button.clearFocus();
        QAccessibleActionInterface *actions =
            QAccessible::queryAccessibleInterface(&button)->actionInterface();
        QSignalSpy clicked(&button, &NavButton::clicked);
        actions->doAction(QAccessibleActionInterface::setFocusAction());
        QVERIFY(button.hasFocus());
        QCOMPARE(clicked.count(), 0);
        QCOMPARE(actions->keyBindingsForAction(QAccessibleActionInterface::pressAction()),
                 QStringList({QStringLiteral("Space"), QStringLiteral("Return")}));
        QVERIFY(
            actions->keyBindingsForAction(QAccessibleActionInterface::setFocusAction()).isEmpty());
    }

    // The key comes up somewhere else, and this button must not stay pressed.
    void losesTheFocusWhileAKeyIsDown()
    {
        NavButton button(QStringLiteral("Logs"), redIcon(), nullptr);
        button.show();
        QApplication::setActiveWindow(&button);
        QVERIFY(QTest::qWaitForWindowActive(&button));
        button.setFocus();
        QTest::keyPress(&button, Qt::Key_Space);
        QTRY_VERIFY(button.property("pressOffset").toDouble() > 1.9);
        button.clearFocus();
        QTRY_COMPARE(button.property("pressOffset").toDouble(), 0.0);
    }

    void deletedByItsOwnClick()
    {
        auto *button = new NavButton(QStringLiteral("Logs"), redIcon(), nullptr);
        button->resize(62, 54);
        connect(button, &NavButton::clicked, button, &QObject::deleteLater);
        QTest::mouseClick(button, Qt::LeftButton, {}, {20, 20});
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

QTEST_MAIN(NavButtonTest)
#include "NavButtonTest.moc"
