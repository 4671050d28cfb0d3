#include "ui/TableLook.h"

#include "ui/Contrast.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QHeaderView>
#include <QPainter>
#include <QProxyStyle>
#include <QTableWidget>
#include <QTest>

namespace {

// Paints headers as some platforms do: light, and deaf to the palette.
class LightHeaders : public QProxyStyle
{
public:
    void drawControl(ControlElement element,
                     const QStyleOption *option,
                     QPainter *painter,
                     const QWidget *widget) const override
    {
        if (element == CE_Header || element == CE_HeaderSection) {
            painter->fillRect(option->rect, Qt::white);
        } else {
            QProxyStyle::drawControl(element, option, painter, widget);
        }
    }
};

} // namespace

class TableLookTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QApplication::setStyle(new LightHeaders);
        QApplication::setPalette(theme::palette(theme::initialAccent()));
    }

    void headerIsReadable_data()
    {
        QTest::addColumn<bool>("withLook");
        QTest::newRow("with the look") << true;
        QTest::newRow("without") << false; // shows that the style is as hostile as it should be
    }

    void headerIsReadable()
    {
        QFETCH(bool, withLook);
        QTableWidget table(2, 2);
        table.setStyleSheet(theme::styleSheet(theme::initialAccent()));
        table.setHorizontalHeaderLabels({QStringLiteral("MMMM"), QStringLiteral("MMMM")});
        if (withLook) {
            applyTableLook(&table);
        }
        table.resize(300, 200);
        table.show();
        QVERIFY(QTest::qWaitForWindowExposed(&table));
        const QImage picture = table.horizontalHeader()->grab().toImage();
        const QColor behind = picture.pixelColor(4, picture.height() / 2);
        QCOMPARE(testcolor::contrast(QColor(0xf2, 0xf6, 0xff), behind) >= 4.5, withLook);
        double lightest = 0;
        for (int x = 0; x < picture.width() / 2; ++x) {
            const QColor color = picture.pixelColor(x, picture.height() / 2);
            lightest = std::max(lightest, testcolor::contrast(color, behind));
        }
        QCOMPARE(lightest >= 4.5, withLook); // the letters are there
    }
};

QTEST_MAIN(TableLookTest)
#include "TableLookTest.moc"
