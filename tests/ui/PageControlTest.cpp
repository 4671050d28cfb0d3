// The controls of a page: focus frame, wheel, knob, arrow, popup.
#include "ui/ChoiceBox.h"
#include "ui/Contrast.h"
#include "ui/SwitchBox.h"
#include "ui/Theme.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QImage>
#include <QScrollBar>
#include <QSlider>
#include <QStyle>
#include <QStyleFactory>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <memory>

namespace {

// A page in the program's look, the way the window does it.
struct Page
{
    Page()
    {
        root.setObjectName(QStringLiteral("rootSurface"));
        slider->setOrientation(Qt::Horizontal);
        slider->setRange(0, 100);
        slider->setValue(50);
        choice->addItems({QStringLiteral("One"), QStringLiteral("Two"), QStringLiteral("Three")});
        for (QWidget *widget : std::initializer_list<QWidget *>{slider, box, choice}) {
            layout->addWidget(widget);
        }
        root.resize(300, 150);
    }

    void dress(const QColor &accent)
    {
        root.setStyleSheet(theme::styleSheet(accent));
        const auto widgets = root.findChildren<QWidget *>();
        for (QWidget *widget : widgets) {
            widget->ensurePolished();
            theme::adopt(widget, theme::palette(accent));
        }
    }

    QWidget root;
    QVBoxLayout *layout = new QVBoxLayout(&root);
    PageControl<QSlider> *slider = new PageControl<QSlider>(&root);
    SwitchBox *box = new SwitchBox(QStringLiteral("Switch"), &root);
    ChoiceBox *choice = new ChoiceBox(&root);
};

QImage picture(QWidget &widget)
{
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(12, 22, 42));
    widget.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

void turnWheel(QWidget &widget)
{
    const QPointF place = QRectF(widget.rect()).center();
    QWheelEvent event(place,
                      widget.mapToGlobal(place),
                      {},
                      {0, -120},
                      Qt::NoButton,
                      Qt::NoModifier,
                      Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(&widget, &event);
}

} // namespace

class PageControlTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { page = std::make_unique<Page>(); }
    void cleanup() { page.reset(); }

    void wheelScrollsThePageUnlessPicked()
    {
        show();
        turnWheel(*page->slider);
        turnWheel(*page->choice);
        QCOMPARE(page->slider->value(), 50);
        QCOMPARE(page->choice->currentIndex(), 0);
        QVERIFY(!page->slider->hasFocus());
        page->slider->setFocus();
        turnWheel(*page->slider);
        QVERIFY(page->slider->value() < 50);
        page->choice->setFocus();
        turnWheel(*page->choice);
        QCOMPARE(page->choice->currentIndex(), 1);
    }

    void focusFrameIsForTheKeyboard()
    {
        page->dress(theme::initialAccent());
        page->dress(theme::initialAccent());
        show();
        page->slider->setFocus(Qt::TabFocusReason);
        const QPoint edge(page->slider->width() / 4, 0); // not where the handle is
        page->root.setAttribute(Qt::WA_KeyboardFocusChange, false);
        const QColor without = picture(*page->slider).pixelColor(edge);
        QTest::keyClick(page->slider, Qt::Key_Tab);
        QTest::keyClick(page->box, Qt::Key_Backtab);
        QVERIFY(page->slider->hasFocus());
        const QColor with = picture(*page->slider).pixelColor(edge);
        QVERIFY(testcolor::contrast(with, without) >= 3);
        page->box->setFocus();
        QCOMPARE(picture(*page->slider).pixelColor(edge), without);
    }

    // The state is seen without its colour, on every accent.
    void knobShowsTheState_data()
    {
        QTest::addColumn<QColor>("accent");
        QTest::addColumn<bool>("rightToLeft");
        for (const QColor &accent : {theme::initialAccent(),
                                     QColor::fromHsv(240, 255, 90),
                                     QColor::fromHsv(60, 20, 255)}) {
            for (const bool rightToLeft : {false, true}) {
                QTest::addRow("%s %d", qPrintable(accent.name()), rightToLeft ? 1 : 0)
                    << accent << rightToLeft;
            }
        }
    }

    void knobShowsTheState()
    {
        QFETCH(QColor, accent);
        QFETCH(bool, rightToLeft);
        page->root.setLayoutDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
        page->dress(accent);
        show();
        // The rail is 40 px wide, the knob 12 px, 4 px from its edge.
        const int rail = rightToLeft ? page->box->width() - 40 : 0;
        const int y = page->box->height() / 2;
        for (const bool checked : {false, true}) {
            page->box->setChecked(checked);
            const QImage image = picture(*page->box);
            const bool atRight = checked != rightToLeft;
            const QColor knob = image.pixelColor(rail + (atRight ? 29 : 10), y);
            QVERIFY(testcolor::luminance(knob) > 0.8);
            // Its rim stands out from the rail on one side, itself from the rim.
            const QColor other = image.pixelColor(rail + (atRight ? 10 : 29), y);
            const QColor rim = image.pixelColor(rail + (atRight ? 24 : 16), y);
            QVERIFY(std::max(testcolor::contrast(knob, other), testcolor::contrast(knob, rim))
                    >= 3);
        }
    }

    void arrowIsDrawn()
    {
        page->dress(theme::initialAccent());
        show();
        const QImage image = picture(*page->choice);
        int bright = 0;
        for (int y = 8; y < image.height() - 8; ++y) {
            for (int x = image.width() - 22; x < image.width() - 2; ++x) {
                bright += testcolor::luminance(image.pixelColor(x, y)) > 0.3 ? 1 : 0;
            }
        }
        QVERIFY2(bright >= 8, qPrintable(QString::number(bright)));
    }

    void popupIsReadable_data()
    {
        QTest::addColumn<QColor>("accent");
        for (const int hue : {0, 60, 120, 205, 300}) {
            for (const int saturation : {20, 255}) {
                for (const int brightness : {90, 255}) {
                    const QColor accent = QColor::fromHsv(hue, saturation, brightness);
                    QTest::addRow("%s", qPrintable(accent.name())) << accent;
                }
            }
        }
    }

    void popupIsReadable()
    {
        QFETCH(QColor, accent);
        page->dress(accent);
        show();
        page->choice->showPopup();
        page->dress(accent); // what came with the popup
        QWidget *view = page->choice->view();
        const QPalette palette = view->palette();
        for (const auto role : {QPalette::Base, QPalette::AlternateBase, QPalette::Window}) {
            QCOMPARE(palette.color(role).alpha(), 255);
            QVERIFY(testcolor::contrast(palette.color(QPalette::Text), palette.color(role)) >= 4.5);
        }
        QVERIFY(testcolor::contrast(palette.color(QPalette::HighlightedText),
                                    palette.color(QPalette::Highlight))
                >= 4.5);
        // And what is really painted behind the rows.
        const QImage image = view->grab().toImage();
        const auto *list = page->choice->view();
        for (int row = 0; row < 3; ++row) {
            const QRect place = list->visualRect(list->model()->index(row, 0));
            QVERIFY(place.height() >= 26);
            const QColor behind = image.pixelColor(place.right() - 10, place.center().y());
            QVERIFY2(testcolor::contrast(palette.color(QPalette::Text), behind) >= 4.5,
                     qPrintable(behind.name()));
        }
        const auto rowColor = [&](int row) {
            const QRect place = list->visualRect(list->model()->index(row, 0));
            return image.pixelColor(place.right() - 10, place.center().y());
        };
        QVERIFY(rowColor(0) != rowColor(1)); // the current one is marked
        page->choice->hidePopup();
    }

    // Also in native styles, which do not ask the palette.
    void scrollBarsAreDark_data()
    {
        QTest::addColumn<QString>("style");
        const QStringList styles = QStyleFactory::keys();
        for (const QString &style : styles) {
            QTest::newRow(qPrintable(style)) << style;
        }
    }

    void scrollBarsAreDark()
    {
        QFETCH(QString, style);
        const QString former = QApplication::style()->name();
        QApplication::setStyle(style);
        auto *bar = new QScrollBar(Qt::Vertical, &page->root);
        bar->setMaximum(100);
        page->layout->addWidget(bar);
        page->dress(theme::initialAccent());
        page->dress(QColor::fromHsv(10, 200, 200)); // a second time, too
        show();
        const QImage image = picture(*bar);
        double sum = 0;
        for (int y = 0; y < image.height(); ++y) {
            sum += testcolor::luminance(image.pixelColor(image.width() / 2, y));
        }
        QApplication::setStyle(former);
        QVERIFY2(sum / image.height() < 0.15, qPrintable(QString::number(sum / image.height())));
    }

private:
    void show()
    {
        page->root.show();
        page->root.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&page->root));
        page->root.setFocus();
    }

    std::unique_ptr<Page> page;
};

QTEST_MAIN(PageControlTest)
#include "PageControlTest.moc"
