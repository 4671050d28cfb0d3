// The cached shadow is the stock shadow, pixel by pixel, and an unchanged widget is rendered once.
#include "ui/CachedShadow.h"
#include "ui/PictureDifference.h"

#include <QFrame>
#include <QGraphicsDropShadowEffect>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <functional>

namespace {

// Each of the two shadows of the scene may be 1 of 255 off.
constexpr int kTwoShadows = 2;

struct Recipe
{
    qreal radius = 0;
    QPointF offset;
    QColor color;
};

// A window with a bright background, a translucent panel with an effect, and inside it a label with another one.
class Scene : public QWidget
{
public:
    Scene(const QSize &panelSize, const Recipe &recipe, bool cached)
        : panel(new QFrame(this))
        , label(new QLabel(QStringLiteral("Veltra"), panel))
        , panelEffect(addEffect(panel, recipe, cached))
        , labelEffect(addEffect(label, recipe, cached))
    {
        setAutoFillBackground(true);
        QPalette background = palette();
        background.setColor(QPalette::Window, QColor(200, 150, 90));
        setPalette(background);
        panel->setObjectName(QStringLiteral("panel"));
        panel->setStyleSheet(QStringLiteral(
            "QFrame#panel { background: rgba(14, 27, 52, 128); border-radius: 10px; }"));
        panel->setGeometry(QRect(QPoint(40, 33), panelSize));
        label->setGeometry(8, 5, panelSize.width() - 16, panelSize.height() - 10);
        resize(panelSize + QSize(80, 70));
    }

    QImage picture(qreal ratio)
    {
        QImage image(size() * ratio, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::transparent);
        render(&image);
        return image;
    }

    QFrame *panel;
    QLabel *label;
    QGraphicsDropShadowEffect *panelEffect;
    QGraphicsDropShadowEffect *labelEffect;

private:
    static QGraphicsDropShadowEffect *addEffect(QWidget *widget, const Recipe &recipe, bool cached)
    {
        auto *effect = cached ? new CachedShadow(widget) : new QGraphicsDropShadowEffect(widget);
        effect->setBlurRadius(recipe.radius);
        effect->setOffset(recipe.offset);
        effect->setColor(recipe.color);
        widget->setGraphicsEffect(effect);
        return effect;
    }
};

// Counts how often it is painted; a widget that changed inside a panel.
class Counter : public QWidget
{
public:
    using QWidget::QWidget;
    int paints = 0;

protected:
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), QColor(paints % 256, 100, 100));
        ++paints;
    }
};

} // namespace

class CachedShadowTest : public QObject
{
    Q_OBJECT

private slots:
    void equalsStockShadow_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<qreal>("radius");
        QTest::addColumn<QPointF>("offset");
        QTest::addColumn<QColor>("color");
        QTest::addColumn<qreal>("ratio");
        const QList<QSize> sizes{{30, 20}, {121, 77}, {400, 260}};
        const QList<Recipe> recipes{{1, {0, 0}, QColor(0, 0, 0, 180)},
                                    {3.5, {1, 1}, QColor(0, 0, 0)},
                                    {10, {0, 0}, QColor(122, 200, 255, 70)},
                                    {18, {0, 4}, QColor(72, 140, 255, 38)},
                                    {24, {0, 0}, QColor(58, 126, 255, 40)},
                                    {26, {-3.5, 6.25}, QColor(255, 0, 90, 200)},
                                    {32, {0, 4}, QColor(72, 140, 255, 108)},
                                    {0, {5, 5}, QColor(1, 2, 3, 99)},
                                    {0, {0, 0}, QColor(1, 2, 3, 99)}};
        for (const QSize &size : sizes) {
            for (const Recipe &recipe : recipes) {
                for (const qreal ratio : {1.0, 1.25, 1.5, 2.0}) {
                    QTest::addRow("%dx%d r%g (%g,%g) @%g",
                                  size.width(),
                                  size.height(),
                                  recipe.radius,
                                  recipe.offset.x(),
                                  recipe.offset.y(),
                                  ratio)
                        << size << recipe.radius << recipe.offset << recipe.color << ratio;
                }
            }
        }
    }

    void equalsStockShadow()
    {
        QFETCH(QSize, size);
        QFETCH(qreal, radius);
        QFETCH(QPointF, offset);
        QFETCH(QColor, color);
        QFETCH(qreal, ratio);
        const Recipe recipe{radius, offset, color};
        Scene stock(size, recipe, false);
        Scene cached(size, recipe, true);
        QVERIFY(largestDifference(cached.picture(ratio), stock.picture(ratio))
                <= 1); // never shown: nothing is kept
        stock.show();
        cached.show();
        QVERIFY(largestDifference(cached.picture(ratio), stock.picture(ratio)) <= kTwoShadows);
        QVERIFY(largestDifference(cached.picture(ratio), stock.picture(ratio))
                <= 1); // now from what was kept

        for (Scene *scene : {&stock, &cached}) {
            scene->label->setText(QStringLiteral("Optimizer"));
        }
        QVERIFY(largestDifference(cached.picture(ratio), stock.picture(ratio)) <= kTwoShadows);

        for (Scene *scene : {&stock, &cached}) {
            scene->panelEffect->setColor(QColor(250, 10, 10, 140));
            scene->labelEffect->setBlurRadius(radius + 7);
            scene->panel->move(51, 30);
        }
        QVERIFY(largestDifference(cached.picture(ratio), stock.picture(ratio)) <= kTwoShadows);

        for (Scene *scene : {&stock, &cached}) {
            scene->panelEffect->setEnabled(false);
            scene->panel->resize(scene->panel->size() + QSize(5, 3));
        }
        QVERIFY(largestDifference(cached.picture(ratio), stock.picture(ratio)) <= kTwoShadows);
    }

    void unchangedSourceIsNotRenderedAgain()
    {
        QWidget window;
        window.resize(300, 200);
        Counter behind(&window);
        behind.setGeometry(window.rect());
        QFrame panel(&window);
        panel.setGeometry(20, 20, 200, 120);
        Counter inside(&panel);
        inside.setGeometry(10, 10, 50, 50);
        auto *shadow = new CachedShadow(&panel);
        shadow->setBlurRadius(18);
        panel.setGraphicsEffect(shadow);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QTRY_VERIFY(behind.paints > 0 && inside.paints > 0);
        QCoreApplication::processEvents();

        const int rendered = shadow->renderCount();
        const int blurred = shadow->blurCount();
        const int insidePaints = inside.paints;
        for (int frame = 0; frame < 5; ++frame) {
            const int before = behind.paints;
            behind.update();
            QTRY_VERIFY(behind.paints > before);
        }
        QCOMPARE(shadow->renderCount(), rendered);
        QCOMPARE(shadow->blurCount(), blurred);
        QCOMPARE(inside.paints, insidePaints);

        inside.update();
        QTRY_VERIFY(inside.paints > insidePaints);
        QCOMPARE(shadow->renderCount(), rendered + 1);

        shadow->setColor(Qt::red); // the widget itself did not change: only the shadow is made anew
        QTRY_COMPARE(shadow->blurCount(), blurred + 1);
        QCOMPARE(shadow->renderCount(), rendered + 1);
    }

    // It has nothing to draw then, so it keeps nothing.
    void switchedOffItKeepsNoPictures()
    {
        QWidget window;
        window.resize(300, 200);
        QFrame panel(&window);
        panel.setGeometry(20, 20, 100, 60);
        auto *shadow = new CachedShadow(&panel);
        panel.setGraphicsEffect(shadow);
        window.show();
        const QImage before = window.grab().toImage();
        const int rendered = shadow->renderCount();
        window.grab();
        QCOMPARE(shadow->renderCount(), rendered);
        QVERIFY(shadow->holdsPictures());
        shadow->setEnabled(false);
        QVERIFY(!shadow->holdsPictures());
        window.grab();
        QVERIFY(!shadow->holdsPictures());
        QCOMPARE(shadow->renderCount(), rendered);
        shadow->setEnabled(true);
        QCOMPARE(window.grab().toImage(), before);
        QCOMPARE(shadow->renderCount(), rendered + 1);
    }

    void movedWidgetMovesItsPicture()
    {
        QWidget window;
        window.resize(300, 200);
        QFrame panel(&window);
        panel.setGeometry(20, 20, 100, 60);
        auto *shadow = new CachedShadow(&panel);
        shadow->setBlurRadius(18);
        panel.setGraphicsEffect(shadow);
        panel.setAutoFillBackground(true);
        panel.setPalette(Qt::black);
        window.show();
        const QImage before = window.grab().toImage();
        const int rendered = shadow->renderCount();
        window.grab();
        QCOMPARE(shadow->renderCount(), rendered);
        panel.move(90, 70);
        const QImage after = window.grab().toImage();
        QVERIFY(before != after);
    }

    void everyKindOfChangeIsSeen()
    {
        const Recipe recipe{12, {0, 3}, QColor(0, 0, 0, 200)};
        Scene stock({150, 90}, recipe, false);
        Scene cached({150, 90}, recipe, true);
        stock.show();
        cached.show();
        const QList<std::function<void(Scene &)>> changes{
            [](Scene &s) { s.label->hide(); },
            [](Scene &s) { s.label->show(); },
            [](Scene &s) { s.label->setEnabled(false); },
            [](Scene &s) { s.label->move(20, 9); },
            [](Scene &s) {
                s.panel->setStyleSheet(QStringLiteral("QFrame#panel { background: red; }"));
            },
            [](Scene &s) { (new QLabel(QStringLiteral("new"), s.panel))->show(); },
            [](Scene &s) {
                QPixmap dot(9, 9);
                dot.fill(Qt::green);
                s.label->setPixmap(dot);
            },
            [](Scene &s) {
                delete s.label;
                s.label = nullptr;
            },
            [](Scene &s) { s.panel->scroll(3, 3); },
            [](Scene &s) { s.panel->hide(); },
            [](Scene &s) { (new QLabel(QStringLiteral("while hidden"), s.panel))->move(30, 30); },
            [](Scene &s) { s.panel->show(); },
            [](Scene &s) { s.hide(); },
            [](Scene &s) { s.panel->findChild<QLabel *>()->setText(QStringLiteral("unseen")); },
            [](Scene &s) { s.show(); },
        };
        int number = 0;
        for (const auto &change : changes) {
            change(stock);
            change(cached);
            QVERIFY2(largestDifference(cached.picture(1), stock.picture(1)) <= kTwoShadows,
                     qPrintable(QString::number(number)));
            ++number;
        }
    }

    void behavesLikeAnyDropShadow()
    {
        QWidget widget;
        auto *shadow = new CachedShadow(&widget);
        widget.setGraphicsEffect(shadow);
        QVERIFY(qobject_cast<QGraphicsDropShadowEffect *>(widget.graphicsEffect()) != nullptr);
        QSignalSpy blur(shadow, &QGraphicsDropShadowEffect::blurRadiusChanged);
        shadow->setBlurRadius(33);
        QCOMPARE(blur.count(), 1);
    }

    void emptyWidgetIsHarmless()
    {
        QWidget window;
        QFrame panel(&window);
        panel.resize(0, 0);
        auto *shadow = new CachedShadow(&panel);
        panel.setGraphicsEffect(shadow);
        window.resize(50, 50);
        QVERIFY(!window.grab().isNull());
    }
};

QTEST_MAIN(CachedShadowTest)
#include "CachedShadowTest.moc"
