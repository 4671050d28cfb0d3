// What the sidebar's entries, its spotlight and its bar look like, against pictures painted directly from their measures.
#include "ui/NavButton.h"
#include "ui/PictureDifference.h"
#include "ui/SidebarNav.h"

#include <QIcon>
#include <QPainter>
#include <QPainterPath>
#include <QTest>
#include <algorithm>

namespace {

constexpr int kHeight = 54;

QColor accent(int alpha)
{
    return {102, 217, 255, alpha};
}

QImage canvasOf(const QSize &size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    return image;
}

QIcon icon()
{
    QPixmap pixmap(18, 18);
    pixmap.fill(Qt::red);
    return QIcon(pixmap);
}

struct Look
{
    bool active = false;
    bool expanded = false;
    double hover = 0;
    double press = 0;
    double text = 0;
};

void fillRounded(QPainter &painter, const QRectF &area, double radius, const QGradient &gradient)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawRoundedRect(area, radius, radius);
}

void paintBody(QPainter &painter, const QRectF &r, const Look &look)
{
    const int glow = look.active ? 120 : static_cast<int>(34 + 66 * look.hover);
    QRadialGradient around(r.center(), 0.72 * r.width());
    around.setColorAt(0, accent(glow));
    around.setColorAt(1, accent(0));
    fillRounded(painter, r.adjusted(-2, -2, 2, 2), 15, around);

    const int body = look.active ? 168 : static_cast<int>(110 + 45 * look.hover);
    QLinearGradient glass(r.topLeft(), r.bottomRight());
    glass.setColorAt(0, QColor(22, 42, 70, body));
    glass.setColorAt(1, QColor(12, 24, 46, body - 14));
    painter.setPen(QPen(accent(static_cast<int>(90 * look.hover) + (look.active ? 110 : 75)), 1));
    painter.setBrush(glass);
    painter.drawRoundedRect(r, 14, 14);

    QLinearGradient sheen(r.topLeft(), r.bottomLeft());
    sheen.setColorAt(0, QColor(255, 255, 255, static_cast<int>(48 + 50 * look.hover)));
    sheen.setColorAt(1, QColor(255, 255, 255, 0));
    const QRectF upper(r.x() + 1, r.y() + 1, r.width() - 2, 0.55 * r.height() - 1);
    fillRounded(painter, upper, 13, sheen);
}

void paintContent(QPainter &painter, const QRectF &r, const Look &look, const NavButton &button)
{
    const int left =
        look.expanded ? static_cast<int>(r.x()) + 14 : static_cast<int>(r.x() + r.width() / 2) - 9;
    painter.drawPixmap(
        left, static_cast<int>(r.y() + r.height() / 2) - 9, button.labelIcon().pixmap(18, 18));
    if (look.text <= 0.01) {
        return;
    }
    QFont font = button.font();
    font.setPointSize(11);
    font.setWeight(look.active ? QFont::Bold : QFont::Normal);
    painter.setFont(font);
    painter.setPen(QColor(235, 246, 255, static_cast<int>(240 * look.text)));
    const QPoint from(static_cast<int>(r.x() + 40), static_cast<int>(r.y()));
    const QPoint to(static_cast<int>(r.x() + r.width() - 9),
                    static_cast<int>(r.y() + r.height() - 1));
    painter.drawText(QRect(from, to), Qt::AlignLeft | Qt::AlignVCenter, button.label());
}

QImage direct(const NavButton &button, const Look &look)
{
    QImage image = canvasOf(button.size());
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF body(
        6, 4 - 1.2 * look.hover + look.press, button.width() - 12, button.height() - 8);
    paintBody(painter, body, look);
    paintContent(painter, body, look, button);
    return image;
}

QImage shown(QWidget &widget)
{
    QImage image = canvasOf(widget.size());
    widget.render(&image, {}, {}, QWidget::RenderFlags());
    return image;
}

} // namespace

class NavPictureTest : public QObject
{
    Q_OBJECT

private slots:
    void buttons_data()
    {
        QTest::addColumn<bool>("active");
        QTest::addColumn<bool>("expanded");
        for (const bool active : {false, true}) {
            for (const bool expanded : {false, true}) {
                QTest::addRow(
                    "%s, %s", active ? "active" : "other", expanded ? "expanded" : "collapsed")
                    << active << expanded;
            }
        }
    }

    void buttons()
    {
        QFETCH(bool, active);
        QFETCH(bool, expanded);
        for (const double hover : {0.0, 0.37, 1.0}) {
            for (const double press : {0.0, 1.3, 2.0}) {
                for (const double text : {0.0, 0.01, 0.6, 1.0}) {
                    const Look look{active, expanded, hover, press, text};
                    NavButton button(QStringLiteral("Proc Watch"), icon());
                    dress(button, look);
                    const int difference = largestDifference(shown(button), direct(button, look));
                    QVERIFY2(difference == 0, qPrintable(QString::number(difference)));
                }
            }
        }
    }

    // Where no button stands, at the left edge.
    void spotlightAndBar()
    {
        constexpr int kStrip = 10; // px
        SidebarNav nav;
        nav.addItem(QStringLiteral("x"), icon(), 0);
        nav.resize(82, 300);
        nav.show();
        QTRY_COMPARE(nav.width(), 82);
        const auto strip = [&nav] {
            return shown(nav).copy(0, 0, kStrip, nav.height());
        };
        const QImage still = strip();
        nav.setCurrentIndex(0);
        nav.updateIndicatorTarget(false);
        nav.setIndicatorY(120);
        nav.setSpotlightAlpha(0.7);
        const QImage expected = withLights(still, nav, 120, 0.7);
        const int difference = largestDifference(strip(), expected);
        QVERIFY2(difference <= 1, qPrintable(QString::number(difference)));
        QVERIFY(largestDifference(still, expected) > 100);
        nav.setSpotlightAlpha(0.01); // too weak to be drawn
        QVERIFY(largestDifference(strip(), withLights(still, nav, 120, 0)) == 0);
    }

private:
    static void dress(NavButton &button, const Look &look)
    {
        button.resize(look.expanded ? 170 : 62, kHeight);
        button.setActive(look.active);
        button.setExpanded(look.expanded);
        button.setHoverStrength(look.hover);
        button.setPressOffset(look.press);
        button.setTextOpacity(look.text);
    }

    static QImage
    withLights(const QImage &still, const SidebarNav &nav, double barTop, double strength)
    {
        QImage image = still;
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        QPainterPath inside;
        inside.addRoundedRect(QRectF(nav.rect()).adjusted(3, 3, -3, -3), 11, 11);
        painter.setClipPath(inside);
        if (strength > 0.01) {
            const double radius = std::max(0.85 * nav.width(), 90.0);
            QRadialGradient light(nav.spotlight(), radius);
            light.setColorAt(0, accent(static_cast<int>(strength * 48)));
            light.setColorAt(1, accent(0));
            painter.setBrush(light);
            painter.drawEllipse(nav.spotlight(), radius, radius);
        }
        QLinearGradient bar(6, barTop, 6, barTop + 44);
        bar.setColorAt(0, accent(240));
        bar.setColorAt(1, accent(130));
        painter.setBrush(bar);
        painter.drawRoundedRect(QRectF(6, barTop, 4, 44), 2, 2);
        return image;
    }
};

QTEST_MAIN(NavPictureTest)
#include "NavPictureTest.moc"
