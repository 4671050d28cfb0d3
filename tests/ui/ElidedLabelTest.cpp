#include "ui/ElidedLabel.h"

#include <QApplication>
#include <QHelpEvent>
#include <QTest>
#include <QToolTip>
#include <QVBoxLayout>

namespace {

QImage picture(QWidget &widget)
{
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    widget.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

bool isBlank(const QImage &image, const QRect &part)
{
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            if (image.pixelColor(x, y) != QColor(Qt::white)) {
                return false;
            }
        }
    }
    return true;
}

void askForToolTip(QWidget &widget)
{
    const QPoint place = widget.rect().center();
    QHelpEvent event(QEvent::ToolTip, place, widget.mapToGlobal(place));
    QCoreApplication::sendEvent(&widget, &event);
}

} // namespace

class ElidedLabelTest : public QObject
{
    Q_OBJECT

private slots:
    void showsWhatFits()
    {
        ElidedLabel label(QStringLiteral("Weather: 12C, Partly cloudy"), nullptr);
        label.resize(400, 24);
        QCOMPARE(label.visibleText(), label.text());
        label.resize(80, 24);
        QVERIFY(label.visibleText().endsWith(QChar(0x2026)));
        QVERIFY(label.text().startsWith(label.visibleText().chopped(1)));
        QVERIFY(label.fontMetrics().horizontalAdvance(label.visibleText()) <= 80);
        QCOMPARE(label.text(), QStringLiteral("Weather: 12C, Partly cloudy"));
    }

    void paintsLikeAnOrdinaryLabel_data()
    {
        QTest::addColumn<Qt::Alignment>("alignment");
        QTest::newRow("left") << (Qt::AlignLeft | Qt::AlignVCenter);
        QTest::newRow("top right") << (Qt::AlignRight | Qt::AlignTop);
    }

    void paintsLikeAnOrdinaryLabel()
    {
        QFETCH(Qt::Alignment, alignment);
        const QString text = QStringLiteral("Location: <b>Dublin</b> & more");
        QLabel plain(text);
        plain.setTextFormat(Qt::PlainText);
        ElidedLabel elided(text, nullptr);
        for (QLabel *label : std::initializer_list<QLabel *>{&plain, &elided}) {
            label->setAlignment(alignment);
            label->resize(400, 30);
        }
        QCOMPARE(picture(elided), picture(plain));
        QVERIFY(!isBlank(picture(elided), elided.rect()));
    }

    void asksForNoWidth()
    {
        QWidget window;
        QVBoxLayout layout(&window);
        auto *label = new ElidedLabel(QString(10000, QLatin1Char('W')), &window);
        layout.addWidget(label);
        QCOMPARE(label->minimumSizeHint().width(), 0);
        QVERIFY(window.minimumSizeHint().width() < 100);
        QCOMPARE(label->minimumSizeHint().height(),
                 QLabel(QStringLiteral("W")).sizeHint().height());
        window.resize(200, 60);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.width(), 200);
        QVERIFY(isBlank(picture(window), QRect(190, 0, 10, 60))); // nothing beyond the margin
    }

    void toolTipShowsAllOfIt()
    {
        ElidedLabel label(QStringLiteral("<b>not bold</b> and rather long"), nullptr);
        label.resize(400, 24);
        label.show();
        askForToolTip(label);
        QVERIFY(QToolTip::text().isEmpty());
        label.resize(60, 24);
        askForToolTip(label);
        QCOMPARE(QToolTip::text(),
                 QStringLiteral("<p>&lt;b&gt;not bold&lt;/b&gt; and rather long</p>"));
        QToolTip::hideText();
    }

    void noRoomIsHarmless()
    {
        ElidedLabel label(QStringLiteral("text"), nullptr);
        label.resize(0, 0);
        label.grab();
        label.setText(QString());
        label.resize(10, 10);
        label.grab();
    }
};

QTEST_MAIN(ElidedLabelTest)
#include "ElidedLabelTest.moc"
