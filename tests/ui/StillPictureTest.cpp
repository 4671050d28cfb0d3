// What is painted once and for all looks as if it were painted at once.
#include "ui/PictureDifference.h"
#include "ui/SidebarBackdrop.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QTest>

namespace {

void paintPanel(QPainter &painter, const QRectF &panel)
{
    QLinearGradient glass(panel.topLeft(), panel.bottomRight());
    glass.setColorAt(0, QColor(10, 22, 42, 188));
    glass.setColorAt(0.6, QColor(10, 20, 38, 165));
    glass.setColorAt(1, QColor(8, 16, 30, 152));
    painter.setPen(QPen(QColor(188, 220, 255, 84), 1));
    painter.setBrush(glass);
    painter.drawRoundedRect(panel, 12, 12);
}

void paintSidebar(QPainter &painter, const QSize &size)
{
    const QRectF panel = QRectF(QPointF(), size).adjusted(1, 1, -1, -1);
    paintPanel(painter, panel);
    QPainterPath inside;
    inside.addRoundedRect(panel.adjusted(2, 2, -2, -2), 11, 11);
    painter.setClipPath(inside);
    painter.setPen(QPen(QColor(150, 190, 245, 16), 1));
    for (int y = 6; y < size.height(); y += 20) {
        painter.drawLine(4, y, size.width() - 4, y);
    }
    for (int x = 6; x < size.width(); x += 20) {
        painter.drawLine(x, 4, x, size.height() - 4);
    }
}

} // namespace

class StillPictureTest : public QObject
{
    Q_OBJECT

private slots:
    void sidebar_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<double>("ratio");
        for (const double ratio : {1.0, 1.25, 1.5, 2.0}) {
            for (const QSize size :
                 {QSize(82, 656), QSize(131, 620), QSize(190, 500), QSize(60, 20)}) {
                QTest::addRow("%dx%d@%g", size.width(), size.height(), ratio) << size << ratio;
            }
        }
    }

    void sidebar()
    {
        QFETCH(const QSize, size);
        QFETCH(const double, ratio);
        QImage direct(size * ratio, QImage::Format_ARGB32_Premultiplied);
        direct.setDevicePixelRatio(ratio);
        direct.fill(Qt::transparent);
        QPainter painter(&direct);
        painter.setRenderHint(QPainter::Antialiasing);
        paintSidebar(painter, size);
        painter.end();
        SidebarBackdrop backdrop;
        const QImage &still = backdrop.picture(size, ratio);
        QCOMPARE(still.devicePixelRatio(), ratio);
        const int difference = largestDifference(still, direct);
        QVERIFY2(difference <= 1, qPrintable(QString::number(difference)));
    }

    void sidebarIsPaintedOncePerSize()
    {
        SidebarBackdrop backdrop;
        const qint64 first = backdrop.picture({82, 600}, 1).cacheKey();
        QCOMPARE(backdrop.picture({82, 600}, 1).cacheKey(), first);
        QVERIFY(backdrop.picture({83, 600}, 1).cacheKey() != first);
        QCOMPARE(backdrop.picture({83, 600}, 2).size(), QSize(166, 1200));
    }
};

QTEST_MAIN(StillPictureTest)
#include "StillPictureTest.moc"
