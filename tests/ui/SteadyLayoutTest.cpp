#include "ui/SteadyLayout.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QTest>
#include <memory>

namespace {

// How often the layout of a widget, or of the one around it, is to be done anew.
class LayoutRequests : public QObject
{
public:
    explicit LayoutRequests(QWidget *widget) { widget->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        count += event->type() == QEvent::LayoutRequest ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }

    int count = 0;
};

} // namespace

class SteadyLayoutTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        window = std::make_unique<QWidget>();
        auto *around = new QVBoxLayout(window.get());
        card = new QWidget(window.get());
        around->addWidget(card);
        column = new SteadyLayout(card);
        figure = new QLabel(QStringLiteral("11:11:11"), card);
        column->addWidget(figure);
        row = new QHBoxLayout;
        inRow = new QLabel(QStringLiteral("11"), card);
        row->addWidget(inRow);
        column->addLayout(row);
        below = new QLabel(QStringLiteral("below"), card);
        column->addWidget(below);
        column->addStretch(1);
        window->resize(300, 200);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        QCoreApplication::processEvents();
    }

    void textsOfTheSameRoomGoUnnoticed()
    {
        const LayoutRequests here(card);
        const LayoutRequests around(window.get());
        figure->setText(QStringLiteral("11:11:12"));
        inRow->setText(QStringLiteral("12"));
        QCoreApplication::processEvents();
        QCOMPARE(here.count, 0);
        QCOMPARE(around.count, 0);
    }

    // The toolkit's own column, for comparison: this is what is saved.
    void theToolkitsColumnAsksForEveryText()
    {
        QWidget plain;
        auto *label = new QLabel(QStringLiteral("11:11:11"), &plain);
        (new QVBoxLayout(&plain))->addWidget(label);
        plain.show();
        QVERIFY(QTest::qWaitForWindowExposed(&plain));
        QCoreApplication::processEvents();
        const LayoutRequests here(&plain);
        label->setText(QStringLiteral("11:11:12"));
        QCoreApplication::processEvents();
        QCOMPARE(here.count, 1);
    }

    void anotherRoomIsGiven_data()
    {
        QTest::addColumn<std::function<void(SteadyLayoutTest &)>>("change");
        using Change = std::function<void(SteadyLayoutTest &)>;
        QTest::newRow("two lines") << Change(
            [](SteadyLayoutTest &test) { test.figure->setText(QStringLiteral("one\ntwo")); });
        QTest::newRow("two lines in a row") << Change(
            [](SteadyLayoutTest &test) { test.inRow->setText(QStringLiteral("one\ntwo")); });
        QTest::newRow("wrapped") << Change([](SteadyLayoutTest &test) {
            test.figure->setWordWrap(true);
            test.figure->setText(QStringLiteral("word ").repeated(40));
        });
        QTest::newRow("larger font") << Change([](SteadyLayoutTest &test) {
            QFont font = test.figure->font();
            font.setPixelSize(60);
            test.figure->setFont(font);
        });
        QTest::newRow("minimum") << Change(
            [](SteadyLayoutTest &test) { test.figure->setMinimumHeight(70); });
        QTest::newRow("spacing") << Change(
            [](SteadyLayoutTest &test) { test.column->setSpacing(40); });
        QTest::newRow("margins") << Change(
            [](SteadyLayoutTest &test) { test.column->setContentsMargins(0, 50, 0, 0); });
        QTest::newRow("another item") << Change([](SteadyLayoutTest &test) {
            test.column->insertWidget(0, new QLabel(QStringLiteral("new")));
        });
        QTest::newRow("stretch") << Change(
            [](SteadyLayoutTest &test) { test.column->setStretch(0, 5); });
        QTest::newRow("space in a row")
            << Change([](SteadyLayoutTest &test) { test.row->setContentsMargins(0, 30, 0, 0); });
    }

    void anotherRoomIsGiven()
    {
        QFETCH(const std::function<void(SteadyLayoutTest &)>, change);
        const int before = below->y();
        change(*this);
        QTRY_VERIFY(below->y() > before + 5);
    }

    void hiddenOnesMakeRoom()
    {
        const int before = below->y();
        figure->hide();
        QTRY_VERIFY(below->y() < before);
        figure->show();
        QTRY_COMPARE(below->y(), before);
    }

    void replacedOnesAreGivenTheirPlace()
    {
        auto *other = new QLabel(figure->text(), card);
        const QRect place = figure->geometry();
        delete column->replaceWidget(figure, other);
        delete figure;
        figure = other;
        other->show();
        QTRY_COMPARE(other->geometry(), place);
    }

    void itemsMayBeginToExpand()
    {
        const int before = figure->height();
        column->setStretch(column->count() - 1, 0);
        figure->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
        QTRY_VERIFY(figure->height() > before);
    }

    void rowsMayStretchOtherwise()
    {
        row->addWidget(new QLabel(QStringLiteral("22"), card));
        QTRY_VERIFY(row->itemAt(1)->geometry().width() > 0);
        QCoreApplication::processEvents();
        row->setStretch(0, 5);
        row->setStretch(1, 1);
        QTRY_VERIFY(inRow->width() > 3 * row->itemAt(1)->geometry().width());
    }

    void removedOnesMakeRoom()
    {
        const int before = below->y();
        delete figure;
        figure = nullptr;
        QTRY_VERIFY(below->y() < before);
    }

    void theOtherWritingDirection()
    {
        column->setAlignment(figure, Qt::AlignLeft);
        QTRY_COMPARE(figure->x(), column->contentsRect().left());
        card->setLayoutDirection(Qt::RightToLeft);
        QTRY_VERIFY(figure->x() > card->width() / 2);
    }

    // The size that the window wants follows what its column needs.
    void theWindowLearnsOfIt()
    {
        const int before = window->sizeHint().height();
        figure->setText(QStringLiteral("one\ntwo\nthree"));
        QTRY_VERIFY(window->sizeHint().height() > before);
    }

private:
    std::unique_ptr<QWidget> window;
    QWidget *card = nullptr;
    SteadyLayout *column = nullptr;
    QHBoxLayout *row = nullptr;
    QLabel *figure = nullptr;
    QLabel *inRow = nullptr;
    QLabel *below = nullptr;
};

QTEST_MAIN(SteadyLayoutTest)
#include "SteadyLayoutTest.moc"
