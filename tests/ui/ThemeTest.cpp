#include "ui/Theme.h"

#include "ui/Contrast.h"

#include <QCryptographicHash>
#include <QFrame>
#include <QLabel>
#include <QRegularExpression>
#include <QTest>
#include <algorithm>
#include <cmath>

using testcolor::contrast;

class ThemeTest : public QObject
{
    Q_OBJECT

private slots:
    void textOfAnyColourCanBeRead()
    {
        const QColor initial = theme::highlightFor(theme::initialAccent());
        QCOMPARE(theme::textFor(initial), initial);
        for (int hue = 0; hue < 360; hue += 5) {
            for (const int brightness : {90, 160, 255}) {
                const QColor color = QColor::fromHsv(hue, 255, brightness);
                const QColor text = theme::textFor(color);
                QVERIFY(testcolor::contrast(text, QColor(28, 36, 58)) >= 4.5);
                QVERIFY(text == color || text.lightness() > color.lightness());
            }
        }
    }

    void templateHasItsLengthAndRules()
    {
        const QString sheet = theme::styleSheetTemplate();
        QCOMPARE(sheet.size(), 4765);
        QCOMPARE(sheet.count(QLatin1Char('{')), 33);
        QCOMPARE(sheet.count(QLatin1Char('}')), 33);
        QVERIFY(!sheet.contains(QLatin1Char('\n')));
        QVERIFY(
            sheet.startsWith(QLatin1String("QWidget#rootSurface { background: transparent; color: "
                                           "#f2f6ff; font-family: 'Segoe UI'; font-size: 13px;}"
                                           "QFrame#windowSurface { background: qlineargradient(")));
        QVERIFY(sheet.endsWith(
            QLatin1String("QCheckBox::indicator:checked { background: rgba(%1, %2, %3, 170); "
                          "border: 1px solid rgba(%1, %2, %3, 220);}")));
    }

    // A change of any character in the sheet is a decision: it shows here.
    void templateIsUnchanged()
    {
        const QByteArray hash = QCryptographicHash::hash(theme::styleSheetTemplate().toUtf8(),
                                                         QCryptographicHash::Sha256);
        QCOMPARE(
            hash.toHex(),
            QByteArrayLiteral("9c1d9fb792f5da6ff67d001d265dbc9254a3e78715d2fd16979fa2ad476a29c9"));
    }

    void selectorsInOrder()
    {
        const QStringList expected{
            QStringLiteral("QWidget#rootSurface"),
            QStringLiteral("QFrame#windowSurface"),
            QStringLiteral("QFrame#titleBar"),
            QStringLiteral("QLabel#titleLabel"),
            QStringLiteral("QToolButton#titleBtn, QToolButton#titleBtnClose"),
            QStringLiteral("QToolButton#titleBtn:hover"),
            QStringLiteral("QToolButton#titleBtnClose:hover"),
            QStringLiteral("QWidget#contentLayer, QStackedWidget, QStackedWidget > QWidget"),
            QStringLiteral("QFrame#sidebar"),
            QStringLiteral("QLabel#brandBadge"),
            QStringLiteral("QToolButton"),
            QStringLiteral("QToolButton:checked"),
            QStringLiteral("QToolButton:hover"),
            QStringLiteral("QToolButton:pressed"),
            QStringLiteral("QFrame#glassCard"),
            QStringLiteral("QLabel#cardTitle"),
            QStringLiteral("QFrame#cardAccentLine"),
            QStringLiteral("QLabel#statValue"),
            QStringLiteral("QLabel"),
            QStringLiteral("QPushButton"),
            QStringLiteral("QPushButton:hover"),
            QStringLiteral("QPushButton:pressed"),
            QStringLiteral("QTextEdit"),
            QStringLiteral("QProgressBar"),
            QStringLiteral("QProgressBar::chunk"),
            QStringLiteral("QSlider::groove:horizontal"),
            QStringLiteral("QSlider::handle:horizontal"),
            QStringLiteral("QSlider::handle:horizontal:hover"),
            QStringLiteral("QSlider::handle:horizontal:pressed"),
            QStringLiteral("QComboBox"),
            QStringLiteral("QComboBox::drop-down"),
            QStringLiteral("QCheckBox::indicator"),
            QStringLiteral("QCheckBox::indicator:checked")};
        QStringList found;
        const QStringList rules =
            theme::styleSheetTemplate().split(QLatin1Char('}'), Qt::SkipEmptyParts);
        for (const QString &rule : rules) {
            found.append(rule.section(QLatin1String(" {"), 0, 0));
        }
        QCOMPARE(found, expected);
    }

    void sheetIsFilledCompletely()
    {
        const QString sheet = theme::styleSheet(QColor::fromHsv(205, 133, 255));
        QVERIFY(!sheet.contains(QLatin1Char('%')));
        QVERIFY(sheet.contains(QLatin1String("rgba(122, 200, 255, 80)")));
        const QColor highlight = QColor::fromHsv(205, 63, 255);
        QVERIFY(sheet.contains(QStringLiteral("color: rgb(%1, %2, %3); padding-top: 2px")
                                   .arg(highlight.red())
                                   .arg(highlight.green())
                                   .arg(highlight.blue())));
    }

    void clamps_data()
    {
        QTest::addColumn<QColor>("wanted");
        QTest::addColumn<int>("hue");
        QTest::addColumn<int>("saturation");
        QTest::addColumn<int>("value");
        QTest::newRow("initial") << theme::initialAccent() << 205 << 133 << 255;
        QTest::newRow("grey") << QColor(200, 200, 200) << 205 << 20 << 200;
        QTest::newRow("grey with a hue") << QColor::fromHsv(100, 0, 200) << 100 << 20 << 200;
        QTest::newRow("black") << QColor(0, 0, 0) << 205 << 20 << 90;
        QTest::newRow("white") << QColor(255, 255, 255) << 205 << 20 << 255;
        QTest::newRow("hue 359") << QColor::fromHsv(359, 200, 200) << 359 << 200 << 200;
        QTest::newRow("hue 0") << QColor::fromHsv(0, 255, 90) << 0 << 255 << 90;
        QTest::newRow("just below") << QColor::fromHsv(10, 19, 89) << 10 << 20 << 90;
        QTest::newRow("translucent") << QColor::fromHsv(10, 50, 120, 7) << 10 << 50 << 120;
    }

    void clamps()
    {
        QFETCH(QColor, wanted);
        const QColor accent = theme::clampedAccent(wanted);
        QTEST(accent.hsvHue(), "hue");
        QTEST(accent.hsvSaturation(), "saturation");
        QTEST(accent.value(), "value");
        QCOMPARE(accent.alpha(), 255);
    }

    void highlights_data()
    {
        QTest::addColumn<QColor>("accent");
        QTest::addColumn<int>("saturation");
        QTest::addColumn<int>("value");
        QTest::newRow("initial") << QColor::fromHsv(205, 133, 255) << 63 << 255;
        QTest::newRow("bright is capped") << QColor::fromHsv(10, 200, 250) << 130 << 255;
        QTest::newRow("pale is floored") << QColor::fromHsv(10, 60, 100) << 15 << 116;
        QTest::newRow("edge 85") << QColor::fromHsv(10, 85, 239) << 15 << 255;
    }

    void highlights()
    {
        QFETCH(QColor, accent);
        const QColor highlight = theme::highlightFor(accent);
        QCOMPARE(highlight.hsvHue(), accent.hsvHue());
        QTEST(highlight.hsvSaturation(), "saturation");
        QTEST(highlight.value(), "value");
        QCOMPARE(highlight.alpha(), 255);
    }

    void selectedTextIsReadableAtEveryAccent()
    {
        for (int hue = 0; hue < 360; hue += 5) {
            for (const int saturation : {20, 90, 133, 255}) {
                for (const int value : {90, 160, 255}) {
                    const QPalette palette =
                        theme::palette(QColor::fromHsv(hue, saturation, value));
                    const double ratio = contrast(palette.color(QPalette::HighlightedText),
                                                  palette.color(QPalette::Highlight));
                    QVERIFY2(ratio >= 4.5,
                             qPrintable(QStringLiteral("%1 %2 %3: %4")
                                            .arg(hue)
                                            .arg(saturation)
                                            .arg(value)
                                            .arg(ratio)));
                }
            }
        }
    }

    void blackOrWhiteIsAlwaysReadable()
    {
        for (int red = 0; red < 256; red += 15) {
            for (int green = 0; green < 256; green += 15) {
                for (int blue = 0; blue < 256; blue += 15) {
                    const QColor color(red, green, blue);
                    QVERIFY(contrast(theme::readableOn(color), color) >= 4.5);
                }
            }
        }
    }

    void textRolesAreLight()
    {
        const QPalette palette = theme::palette(theme::initialAccent());
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
            QCOMPARE(palette.color(role), QColor(0xf2, 0xf6, 0xff));
        }
        for (const auto role : {QPalette::Base, QPalette::AlternateBase}) {
            QVERIFY(palette.color(role).alpha() < 255);
            QVERIFY(contrast(palette.color(QPalette::Text), palette.color(role)) >= 4.5);
            QVERIFY(contrast(palette.color(QPalette::PlaceholderText), palette.color(role)) >= 4.5);
        }
        QVERIFY(contrast(palette.color(QPalette::ButtonText), palette.color(QPalette::Button))
                >= 4.5);
    }

    void fontIsThirteenPixels()
    {
        QCOMPARE(theme::font().pixelSize(), 13);
        QCOMPARE(theme::font().families().constFirst(), QStringLiteral("Segoe UI"));
    }

    // The style sheet goes before the palette; everything else comes from the palette; the accent follows.
    void adoptedPaletteFillsTheGaps()
    {
        QWidget window;
        QLabel plain(&window);
        QLabel titled(&window);
        titled.setObjectName(QStringLiteral("cardTitle"));
        window.setStyleSheet(theme::styleSheet(theme::initialAccent()));
        window.show();
        for (const QColor &accent : {theme::initialAccent(), QColor::fromHsv(10, 200, 200)}) {
            window.setStyleSheet(theme::styleSheet(accent));
            for (QLabel *label : {&plain, &titled}) {
                theme::adopt(label, theme::palette(accent));
            }
            QCOMPARE(plain.palette().color(QPalette::WindowText), QColor(0xf2, 0xf6, 0xff));
            QCOMPARE(titled.palette().color(QPalette::WindowText), QColor(0xee, 0xf6, 0xff));
            QCOMPARE(plain.palette().color(QPalette::Highlight), accent);
            QCOMPARE(titled.palette().color(QPalette::Highlight), accent);
            QCOMPARE(plain.font().pixelSize(), 13);
            QCOMPARE(titled.font().pixelSize(), 16);
        }
    }
};

QTEST_MAIN(ThemeTest)
#include "ThemeTest.moc"
