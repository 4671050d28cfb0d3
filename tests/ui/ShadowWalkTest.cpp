// Random changes to shadows within shadows, in small repaints: what is kept stays what the stock effect would draw.
#include "ui/CachedShadow.h"
#include "ui/PictureDifference.h"

#include <QFrame>
#include <QImage>
#include <QLabel>
#include <QScreen>
#include <QTest>
#include <array>
#include <functional>
#include <random>

namespace {

// A panel with two cards, each with two labels; panel, cards and the second labels throw shadows.
class Scene : public QWidget
{
public:
    explicit Scene(bool isCached)
        : cached(isCached)
        , panel(this)
    {
        resize(420, 300);
        setAutoFillBackground(true);
        setPalette(QColor(200, 150, 90));
        look(panel, {20, 15, 380, 270}, QStringLiteral("rgba(14, 27, 52, 128)"));
        addShadow(panel, 24, {0, 0});
        addCard({20, 20, 330, 90});
        addCard({40, 130, 280, 110});
    }

    std::array<QLabel *, 4> labels{};
    std::array<QFrame *, 2> cards{};
    QFrame *panelFrame() { return &panel; }

    static QGraphicsDropShadowEffect *shadowOf(const QWidget *widget)
    {
        return qobject_cast<QGraphicsDropShadowEffect *>(widget->graphicsEffect());
    }

private:
    static void look(QFrame &frame, const QRect &geometry, const QString &color)
    {
        frame.setObjectName(QStringLiteral("frame"));
        frame.setStyleSheet(
            QStringLiteral("QFrame#frame { background: %1; border-radius: 10px; }").arg(color));
        frame.setGeometry(geometry);
    }

    void addShadow(QWidget &widget, qreal blurRadius, const QPointF &offset) const
    {
        auto *effect = cached ? new CachedShadow(&widget) : new QGraphicsDropShadowEffect(&widget);
        effect->setBlurRadius(blurRadius);
        effect->setOffset(offset);
        effect->setColor(QColor(10, 20, 90, 200));
        widget.setGraphicsEffect(effect);
    }

    void addCard(const QRect &geometry)
    {
        const std::size_t number = count++;
        auto *card = new QFrame(&panel);
        look(*card, geometry, QStringLiteral("rgba(240, 240, 255, 60)"));
        addShadow(*card, 18, {0, 4});
        cards.at(number) = card;
        for (int i = 0; i < 2; ++i) {
            auto *label = new QLabel(QStringLiteral("Veltra"), card);
            label->setGeometry(12 + 130 * i, 10, 110, 24);
            labels.at(2 * number + static_cast<std::size_t>(i)) = label;
        }
        addShadow(*labels.at(2 * number + 1), 6, {1, 1});
    }

    bool cached;
    std::size_t count = 0;
    QFrame panel;
};

// Each of three shadows within each other may be 1 of 255 off; two at once is the most that was seen.
constexpr int kAllowedDifference = 2;

using Random = std::mt19937;
using Change = std::function<void(Scene &, Random &)>;

QLabel &anyLabel(Scene &scene, Random &random)
{
    return *scene.labels.at(random() % 4);
}

QFrame &anyCard(Scene &scene, Random &random)
{
    return *scene.cards.at(random() % 2);
}

const std::array<Change, 12> &changes()
{
    static const std::array<Change, 12> all{{
        [](Scene &s, Random &r) { anyLabel(s, r).setText(QString::number(r() % 100000)); },
        [](Scene &s, Random &r) { anyLabel(s, r).setText(QString::number(r() % 100000)); },
        [](Scene &s, Random &r) { anyLabel(s, r).setText(QString()); },
        [](Scene &s, Random &r) {
            anyLabel(s, r).setText(QStringLiteral("<b>new</b>"));
            anyLabel(s, r).setText(QString::number(r()));
        },
        [](Scene &s, Random &r) {
            anyLabel(s, r).move(static_cast<int>(r() % 200), static_cast<int>(r() % 60));
        },
        [](Scene &s, Random &r) {
            QLabel &label = anyLabel(s, r);
            label.setVisible(!label.isVisible());
        },
        [](Scene &s, Random &r) {
            QFrame &card = anyCard(s, r);
            card.move(static_cast<int>(r() % 200) - 50, static_cast<int>(r() % 200) - 50);
        },
        [](Scene &s, Random &r) {
            anyCard(s, r).resize(150 + static_cast<int>(r() % 150),
                                 60 + static_cast<int>(r() % 60));
        },
        [](Scene &s, Random &r) {
            Scene::shadowOf(&anyCard(s, r))
                ->setColor(QColor(200, 10, 10, static_cast<int>(r() % 256)));
        },
        [](Scene &s, Random &r) {
            Scene::shadowOf(&anyCard(s, r))->setBlurRadius(4 + static_cast<int>(r() % 30));
        },
        [](Scene &s, Random &r) {
            Scene::shadowOf(s.panelFrame())->setOffset(static_cast<int>(r() % 9) - 4, 2);
        },
        [](Scene &s, Random &r) {
            s.panelFrame()->resize(300 + static_cast<int>(r() % 120),
                                   200 + static_cast<int>(r() % 100));
        },
    }};
    return all;
}

QImage grabbed(QWidget &widget)
{
    return widget.grab().toImage();
}

QImage onScreen(QWidget &widget)
{
    return widget.screen()
        ->grabWindow(widget.winId())
        .toImage()
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace

class ShadowWalkTest : public QObject
{
    Q_OBJECT

private slots:
    void walk_data()
    {
        QTest::addColumn<unsigned>("seed");
        for (unsigned seed = 1; seed <= 4; ++seed) {
            QTest::addRow("seed %u", seed) << seed;
        }
    }

    void walk()
    {
        QFETCH(unsigned, seed);
        Scene stock(false);
        Scene cached(true);
        cached.move(0, 0);
        stock.move(cached.width() + 40, 0); // beside it: both are read from the screen
        for (Scene *scene : {&stock, &cached}) {
            scene->show();
            QVERIFY(QTest::qWaitForWindowExposed(scene));
        }
        Random random(seed);
        for (int step = 0; step < 60; ++step) {
            const auto &change = changes().at(random() % changes().size());
            for (unsigned n = 1 + random() % 2; n > 0; --n) {
                const auto choice = random();
                for (Scene *scene : {&stock, &cached}) {
                    Random same(choice);
                    change(*scene, same);
                }
            }
            QCoreApplication::processEvents(); // one frame
            if (random() % 4 == 0) {
                const int difference = largestDifference(grabbed(cached), grabbed(stock));
                QVERIFY2(difference <= kAllowedDifference,
                         qPrintable(QStringLiteral("step %1: %2").arg(step).arg(difference)));
            }
        }
        stock.update();
        cached.update();
        QCoreApplication::processEvents();
        QTRY_VERIFY(largestDifference(onScreen(cached), onScreen(stock)) <= kAllowedDifference);
    }

    // A label of a card in a panel: neither card nor panel is rendered as a whole.
    void smallChangesAreCheap()
    {
        Scene scene(true);
        scene.show();
        QVERIFY(QTest::qWaitForWindowExposed(&scene));
        QTRY_VERIFY(static_cast<CachedShadow *>(Scene::shadowOf(scene.panelFrame()))->renderCount()
                    > 0);
        QCoreApplication::processEvents();
        auto *panelShadow = static_cast<CachedShadow *>(Scene::shadowOf(scene.panelFrame()));
        const qint64 before = panelShadow->renderedPixels();
        for (int i = 0; i < 10; ++i) {
            scene.labels[0]->setText(QString::number(i));
            QCoreApplication::processEvents();
        }
        const QSize whole = scene.panelFrame()->size() * scene.devicePixelRatio();
        const qint64 perChange = (panelShadow->renderedPixels() - before) / 10;
        QVERIFY(perChange > 0);
        if (scene.devicePixelRatio() == 2 || scene.devicePixelRatio() == 1) {
            QVERIFY2(perChange < whole.width() * whole.height() / 10,
                     qPrintable(QString::number(perChange)));
        }
    }

    // Changed by somebody's painting, it is painted once more, with what was changed.
    void changesWhilePaintingAreSeen()
    {
        class Late : public QWidget
        {
        public:
            using QWidget::QWidget;
            QLabel *other = nullptr;

        protected:
            void paintEvent(QPaintEvent * /*event*/) override
            {
                if (other != nullptr) {
                    std::exchange(other, nullptr)->setText(QStringLiteral("later"));
                }
            }
        };
        Scene scene(true);
        Late late(scene.cards[0]);
        late.setGeometry(290, 60, 20, 20);
        scene.show();
        QVERIFY(QTest::qWaitForWindowExposed(&scene));
        QCoreApplication::processEvents();
        late.other = scene.labels[0];
        late.update();
        QTRY_COMPARE(scene.labels[0]->text(), QStringLiteral("later"));
        QCoreApplication::processEvents();
        const QImage kept = grabbed(scene);
        scene.hide(); // drops what was kept
        scene.show();
        QCOMPARE(largestDifference(kept, grabbed(scene)) <= 1, true);
    }
};

QTEST_MAIN(ShadowWalkTest)
#include "ShadowWalkTest.moc"
