// Every page of the gallery opens and shows something.
#include "gallery/Gallery.h"

#include "notify/DesktopToast.h"
#include "ui/Contrast.h"
#include "ui/SidebarGlow.h"
#include "ui/TiltCard.h"

#include <QApplication>
#include <QGraphicsEffect>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>
#include <set>

class GalleryTest : public QObject
{
    Q_OBJECT

private slots:
    void everyPageShowsItsWidget()
    {
        Gallery gallery;
        gallery.show();
        QVERIFY(gallery.pages->count() >= 10);
        QCOMPARE(gallery.names->count(), gallery.pages->count());
        for (int row = 0; row < gallery.names->count(); ++row) {
            gallery.names->setCurrentRow(row);
            QCOMPARE(gallery.pages->currentIndex(), row);
            const QImage image = gallery.grab(gallery.pages->geometry()).toImage();
            std::set<QRgb> colors;
            for (int y = 0; y < image.height(); y += 3) {
                for (int x = 0; x < image.width(); x += 3) {
                    colors.insert(image.pixel(x, y));
                }
            }
            QVERIFY2(colors.size() > 10 || row == 6, qPrintable(gallery.names->item(row)->text()));
        }
        QVERIFY(gallery.findChild<SidebarGlow *>() != nullptr);
    }

    void tiltCardWrapsALabel()
    {
        Gallery gallery;
        gallery.show();
        const auto widgets = gallery.findChildren<QWidget *>();
        const TiltCard *card = nullptr;
        for (const QWidget *widget : widgets) {
            card = card != nullptr ? card : dynamic_cast<const TiltCard *>(widget);
        }
        if (card == nullptr) {
            QFAIL("no tilt card");
        }
        QVERIFY(qobject_cast<QLabel *>(card->content()) != nullptr);
        QVERIFY(card->content()->graphicsEffect() != nullptr);
    }

    void toastsAppear()
    {
        Gallery gallery;
        gallery.show();
        QPushButton *stays = nullptr;
        const auto buttons = gallery.findChildren<QPushButton *>();
        for (QPushButton *button : buttons) {
            stays = button->text() == QLatin1String("One that stays") ? button : stays;
        }
        if (stays == nullptr) {
            QFAIL("no such button");
        }
        stays->click();
        int toasts = 0;
        const auto windows = QApplication::topLevelWidgets();
        for (const QWidget *window : windows) {
            toasts += qobject_cast<const DesktopToast *>(window) != nullptr ? 1 : 0;
        }
        QCOMPARE(toasts, 1);
    }

    void textIsReadable()
    {
        Gallery gallery;
        gallery.show();
        const auto labels = gallery.findChildren<QLabel *>();
        for (const QLabel *label : labels) {
            QVERIFY(testcolor::contrast(label->palette().color(QPalette::WindowText),
                                        QColor(12, 22, 42))
                    >= 4.5);
        }
    }
};

QTEST_MAIN(GalleryTest)
#include "GalleryTest.moc"
