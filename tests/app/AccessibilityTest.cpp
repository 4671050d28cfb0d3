// What somebody who does not see the window well, or uses no mouse, needs of every page: names and roles, the order of Tab,
// and text that stands out from what is behind it.
#include "app/MainWindow.h"

#include "app/TextContrast.h"
#include "fakes/ScriptedPlatform.h"
#include "monitor/ProcessWatcherWidget.h"
#include "ui/AnimatedNav.h"
#include "ui/Theme.h"

#include <QAccessible>
#include <QApplication>
#include <QGraphicsEffect>
#include <QPushButton>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <memory>

namespace {

constexpr int kPages = 8;
constexpr int kAccents = 20;

bool isControl(QAccessible::Role role)
{
    switch (role) {
    case QAccessible::Button:
    case QAccessible::CheckBox:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::List:
    case QAccessible::PageTab:
    case QAccessible::ProgressBar:
    case QAccessible::Slider:
    case QAccessible::SpinBox:
    case QAccessible::Table:
        return true;
    default:
        return false;
    }
}

QString describe(const QWidget *widget)
{
    return QStringLiteral("%1 \"%2\" %3")
        .arg(QLatin1String(widget->metaObject()->className()),
             QAccessible::queryAccessibleInterface(const_cast<QWidget *>(widget))
                 ->text(QAccessible::Name),
             widget->objectName());
}

bool takesTab(const QWidget *widget)
{
    return widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) != 0
        && widget->focusProxy() == nullptr;
}

QRect placeIn(const QWidget *widget, const QWidget *page)
{
    return {widget->mapTo(page, QPoint(0, 0)), widget->size()};
}

// The card that it is on, which is read to its end before the next one.
const QWidget *cardOf(const QWidget *widget, const QWidget *page)
{
    const QWidget *card = widget;
    for (const QWidget *w = widget; w != page; w = w->parentWidget()) {
        card = w->objectName() == QLatin1String("glassCard") ? w : card;
    }
    return card;
}

QStringList labelsOf(const QAccessibleInterface &seen)
{
    QStringList names;
    const auto relations = seen.relations(QAccessible::Label);
    for (const auto &[label, relation] : relations) {
        names.append(label->text(QAccessible::Name));
    }
    return names;
}

// Below it, or beside it to the right.
bool follows(const QRect &next, const QRect &before)
{
    const bool isBeside = next.top() <= before.bottom() && next.bottom() >= before.top();
    return isBeside ? next.left() > before.left() : next.top() > before.top();
}

} // namespace

class AccessibilityTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        fakes::scriptedPlatform() = {};
        window = std::make_unique<MainWindow>(nullptr);
        window->timers.pulse->stop();
        window->timers.particles->stop();
        window->show();
        QApplication::setActiveWindow(window.get());
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }

    void cleanup() { window.reset(); }

    void everyControlHasNameAndRole_data() { pages(); }
    void everyControlHasNameAndRole()
    {
        QWidget *page = openPage();
        int controls = 0;
        const auto widgets =
            page->findChildren<QWidget *>() + window->sidebar->findChildren<QWidget *>();
        for (QWidget *widget : widgets) {
            const QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(widget);
            QVERIFY(seen != nullptr);
            if (!widget->isVisible() || !(isControl(seen->role()) || takesTab(widget))) {
                continue;
            }
            ++controls;
            QVERIFY2(isControl(seen->role()) || seen->role() == QAccessible::StaticText,
                     qPrintable(describe(widget) + QStringLiteral(": role %1").arg(seen->role())));
            QVERIFY2(!seen->text(QAccessible::Name).trimmed().isEmpty(),
                     qPrintable(describe(widget)));
        }
        QVERIFY(controls >= kPages + 1); // the sidebar's, and some of the page
    }

    // A figure is named by itself, and its title belongs to it.
    void everyFigureIsHeard()
    {
        show(MainWindow::ProcWatchPage);
        const auto figures =
            window->processWatcher->findChildren<QLabel *>(QStringLiteral("statValue"));
        QCOMPARE(figures.size(), 4);
        for (QLabel *figure : figures) {
            const QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(figure);
            QCOMPARE(seen->text(QAccessible::Name), figure->text());
            QVERIFY(!labelsOf(*seen).isEmpty());
        }
    }

    // On some systems a combo box is named by what is chosen.
    void everyChoiceTellsWhatItIsFor()
    {
        const auto boxes = window->pageStack->findChildren<QComboBox *>();
        QCOMPARE(boxes.size(), 3);
        for (QComboBox *box : boxes) {
            const QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(box);
            QVERIFY2(!labelsOf(*seen).isEmpty() || !seen->text(QAccessible::Description).isEmpty(),
                     qPrintable(box->accessibleName()));
        }
        const auto *mode = QAccessible::queryAccessibleInterface(window->settings.performanceMode);
        QCOMPARE(labelsOf(*mode), QStringList(QStringLiteral("Performance Mode")));
    }

    void tabReachesEverythingInReadingOrder_data() { pages(); }
    void tabReachesEverythingInReadingOrder()
    {
        QWidget *page = openPage();
        const QList<QWidget *> reached = reachedByTab(page);
        const auto widgets = page->findChildren<QWidget *>();
        for (QWidget *widget : widgets) {
            QVERIFY2(!takesTab(widget) || reached.contains(widget), qPrintable(describe(widget)));
        }
        for (qsizetype i = 1; i < reached.size(); ++i) {
            const QWidget *before = reached.at(i - 1);
            const QWidget *next = reached.at(i);
            const QWidget *cardBefore = cardOf(before, page);
            const QWidget *cardNext = cardOf(next, page);
            const bool isInOrder = cardBefore == cardNext
                ? follows(placeIn(next, page), placeIn(before, page))
                : follows(placeIn(cardNext, page), placeIn(cardBefore, page));
            QVERIFY2(isInOrder,
                     qPrintable(describe(before) + QStringLiteral(" -> ") + describe(next)));
        }
    }

    void textStandsOut_data()
    {
        QTest::addColumn<QColor>("accent");
        QTest::newRow("initial") << theme::initialAccent();
        QTest::newRow("dark blue") << QColor::fromHsv(240, 255, theme::kSmallestBrightness);
        QRandomGenerator random(20261121);
        for (int i = 0; i < kAccents; ++i) {
            const QColor accent = theme::clampedAccent(
                QColor::fromHsv(random.bounded(360), random.bounded(256), random.bounded(256)));
            QTest::addRow("%s", qPrintable(accent.name())) << accent;
        }
    }

    // The picture is what counts: the letters against what most of their box shows.
    void textStandsOut()
    {
        QFETCH(QColor, accent);
        window->accentColor = accent;
        window->applyTheme();
        for (int index = 0; index < kPages; ++index) {
            QWidget *page = show(index);
            const QImage picture = pictureOf(page);
            const QList<textcontrast::Text> texts = textcontrast::textsOn(*page);
            QVERIFY(texts.size() >= 2);
            for (const textcontrast::Text &text : texts) {
                const double ratio = textcontrast::measure(picture, text.place);
                QVERIFY2(ratio >= 4.5,
                         qPrintable(QStringLiteral("\"%1\": %2").arg(text.what).arg(ratio)));
            }
        }
    }

    void measuringTellsWorseFromBetter()
    {
        QImage picture(80, 20, QImage::Format_RGB32);
        picture.fill(QColor(40, 40, 60));
        QVERIFY(textcontrast::measure(picture, picture.rect()) < 1.1);
        picture.setPixelColor(10, 10, QColor(70, 70, 90));
        QVERIFY(textcontrast::measure(picture, picture.rect()) < 4.5);
        picture.setPixelColor(11, 10, QColor(240, 240, 250));
        QVERIFY(textcontrast::measure(picture, picture.rect()) > 10);
    }

private:
    static void pages()
    {
        QTest::addColumn<int>("page");
        for (int page = 0; page < kPages; ++page) {
            QTest::addRow("page %d", page) << page;
        }
    }

    QWidget *openPage()
    {
        QFETCH(int, page);
        return show(page);
    }

    QWidget *show(int page)
    {
        QWidget *opened = window->pageStack->widget(page);
        window->pageStack->setCurrentIndex(page);
        opened->setGraphicsEffect(nullptr); // no entrance
        window->updateSystemStats();
        ProcessSnapshot snapshot;
        snapshot.rows = {
            {QStringLiteral("editor"), 4711, 12.5, 100.25, 3.5, QStringLiteral("Running"), 1}};
        window->processWatcher->applySnapshot(snapshot);
        QCoreApplication::processEvents();
        return opened;
    }

    // In their order, from the first on the page to the last.
    QList<QWidget *> reachedByTab(const QWidget *page)
    {
        constexpr int kMost = 200;
        QList<QWidget *> reached;
        window->sidebar->findChildren<QWidget *>().constLast()->setFocus(Qt::TabFocusReason);
        window->closeButton->setFocus(Qt::TabFocusReason);
        const QWidget *first = QApplication::focusWidget();
        for (int i = 0; i < kMost; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QWidget *now = QApplication::focusWidget();
            if (now == first || now == nullptr) {
                break;
            }
            if (page->isAncestorOf(now)) {
                reached.append(now);
            }
        }
        const auto bars = page->findChildren<QScrollBar *>();
        for (QScrollBar *bar : bars) {
            bar->setValue(0); // it has scrolled to what was reached
        }
        return reached;
    }

    QImage pictureOf(QWidget *page)
    {
        QCoreApplication::processEvents();
        QImage picture(window->size(), QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::black);
        window->render(&picture, {}, {}, QWidget::DrawChildren);
        return picture.copy(QRect(page->mapTo(window.get(), QPoint(0, 0)), page->size()));
    }

    std::unique_ptr<MainWindow> window;
};

QTEST_MAIN(AccessibilityTest)
#include "AccessibilityTest.moc"
