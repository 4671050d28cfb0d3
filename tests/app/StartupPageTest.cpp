// The list of start-up entries: what it holds, the search, the keyboard, and the button.
#include "app/MainWindow.h"
#include "app/WindowProbes.h"
#include "fakes/ScriptedPlatform.h"
#include "ui/GlassCard.h"

#include <QAccessible>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTableWidget>
#include <QVBoxLayout>
#include <memory>

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

} // namespace

class StartupPageTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        fakes::scriptedPlatform() = {};
        window = std::make_unique<MainWindow>(nullptr);
        window->onNavChanged(MainWindow::StartupPage);
        table = window->startup.table;
    }

    void cleanup()
    {
        probes::closeToasts();
        window.reset();
    }

    void cardIsBuiltAsDesigned()
    {
        const QWidget *page = window->startup.page;
        QVERIFY(qobject_cast<QVBoxLayout *>(page->layout()) != nullptr);
        QCOMPARE(page->layout()->contentsMargins(), QMargins());
        QCOMPARE(page->layout()->spacing(), 16);
        const auto cards = page->findChildren<GlassCard *>();
        QCOMPARE(cards.size(), 1);
        const auto *layout = qobject_cast<QVBoxLayout *>(cards.constFirst()->layout());
        QCOMPARE(layout->count(), 6); // title and accent line first
        const auto *title = qobject_cast<QLabel *>(layout->itemAt(0)->widget());
        QCOMPARE(title->text(), latin("Startup Manager"));
        const auto *note = qobject_cast<QLabel *>(layout->itemAt(2)->widget());
        QCOMPARE(note->text(),
                 latin("Read-only startup listing with safe helper actions. Use Windows Startup "
                       "settings to toggle reliably."));
        QVERIFY(note->wordWrap());
        QCOMPARE(layout->itemAt(3)->widget(), window->startup.search);
        QCOMPARE(window->startup.search->placeholderText(), latin("Search startup entries..."));
        QCOMPARE(layout->itemAt(4)->widget(), table);
        QCOMPARE(layout->stretch(4), 1);
        QCOMPARE(layout->itemAt(5)->widget(), window->startup.openSettings);
        QCOMPARE(window->startup.openSettings->text(), latin("Open Startup Apps Settings"));
        QVERIFY(cards.constFirst()->graphicsEffect() != nullptr);
    }

    void tableHoldsTheEntriesInOrder()
    {
        QCOMPARE(visibleRows(), allRows());
        QCOMPARE(table->columnCount(), 3);
        QStringList headers;
        for (int column = 0; column < 3; ++column) {
            headers.append(table->horizontalHeaderItem(column)->text());
            QCOMPARE(table->horizontalHeader()->sectionResizeMode(column), QHeaderView::Stretch);
        }
        QCOMPARE(headers,
                 (QStringList{latin("Startup Entry"), latin("Publisher"), latin("Impact")}));
        QVERIFY(table->horizontalHeader()->stretchLastSection());
        QCOMPARE(table->editTriggers(), QAbstractItemView::NoEditTriggers);
        QVERIFY(!table->isSortingEnabled());
    }

    void search_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QList<int>>("rows");
        const auto row = [](const char *typed, const QList<int> &rows) {
            QTest::newRow(typed) << latin(typed) << rows;
        };
        row("microsoft", {0, 1});
        row("high", {2});
        row("corp", {0, 1, 2, 4});
        row("  discord", {});
        row("discord", {3});
        row("LOW", {0, 4});
        row("medium", {1, 3});
        row("Discord Inc.", {3});
        row(" ", {0, 1, 2, 3, 4}); // the one in the middle counts
        row("OneDrive ", {});
        row("nothing of the kind", {});
        row(".*", {});
        row("", {0, 1, 2, 3, 4});
    }

    void search()
    {
        QFETCH(QString, typed);
        QFETCH(QList<int>, rows);
        window->startup.search->setText(typed);
        QStringList expected;
        for (const int row : rows) {
            expected.append(allRows().at(row));
        }
        QCOMPARE(visibleRows(), expected);
        window->startup.search->clear();
        QCOMPARE(visibleRows(), allRows());
    }

    void searchFollowsEveryKey()
    {
        window->show();
        QTest::keyClicks(window->startup.search, latin("di"));
        QCOMPARE(visibleRows(), (QStringList{allRows().at(1), allRows().at(3), allRows().at(4)}));
        QTest::keyClicks(window->startup.search, latin("s"));
        QCOMPARE(visibleRows(), QStringList{allRows().at(3)});
        QTest::keyClick(window->startup.search, Qt::Key_Backspace);
        QCOMPARE(visibleRows().size(), 3);
    }

    void rowsAndCellsMayBeMissing()
    {
        delete table->takeItem(3, 0);
        table->insertRow(table->rowCount());
        window->startup.search->setText(latin("discord"));
        QVERIFY(!table->isRowHidden(3)); // by its publisher
        QVERIFY(table->isRowHidden(5));
        window->startup.search->clear();
        QVERIFY(table->isRowHidden(5)); // no cell, no match
        table->setRowCount(0);
        window->startup.search->setText(latin("x"));
    }

    void nothingCanBeEdited()
    {
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        table->setFocus();
        table->setCurrentCell(1, 0);
        QTest::keyClick(table, Qt::Key_F2);
        QTest::keyClicks(table, latin("x"));
        QVERIFY(table->findChild<QLineEdit *>() == nullptr);
        QTest::mouseDClick(table->viewport(),
                           Qt::LeftButton,
                           {},
                           table->visualItemRect(table->item(1, 0)).center());
        QVERIFY(table->findChild<QLineEdit *>() == nullptr);
        QCOMPARE(visibleRows(), allRows());
    }

    // Arrows move through the rows, and Tab leads in and out.
    void keyboard()
    {
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        window->startup.search->setFocus();
        QTest::keyClick(window->startup.search, Qt::Key_Tab);
        QCOMPARE(window->focusWidget(), table);
        QTest::keyClick(table, Qt::Key_Down);
        QTest::keyClick(table, Qt::Key_Down);
        QCOMPARE(table->selectionModel()->selectedRows().size(), 1);
        QTest::keyClick(table, Qt::Key_Tab);
        QCOMPARE(window->focusWidget(), window->startup.openSettings);
        fakes::scriptedPlatform().availablePages = {platform::SystemPage::StartupApps};
        QTest::keyClick(window->startup.openSettings, Qt::Key_Space);
        QCOMPARE(fakes::scriptedPlatform().openedPages.size(), std::size_t(1));
    }

    void isNamedForScreenReaders()
    {
        const auto nameOf = [](QWidget *widget) {
            return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
        };
        QCOMPARE(nameOf(window->startup.search), latin("Search startup entries"));
        QCOMPARE(nameOf(table), latin("Startup entries"));
        QCOMPARE(nameOf(window->startup.openSettings), latin("Open Startup Apps Settings"));
    }

    void button_data()
    {
        QTest::addColumn<bool>("opens");
        QTest::newRow("opens") << true;
        QTest::newRow("fails") << false;
    }

    void button()
    {
        QFETCH(bool, opens);
        auto &script = fakes::scriptedPlatform();
        if (opens) {
            script.availablePages = {platform::SystemPage::StartupApps};
        }
        window->startup.openSettings->click();
        QCOMPARE(script.openedPages,
                 std::vector<platform::SystemPage>{platform::SystemPage::StartupApps});
        QCOMPARE(probes::logLines(window->historyLogView).constLast(),
                 latin(opens ? "Opened Startup Apps settings."
                             : "Failed opening Startup Apps settings."));
        QCOMPARE(probes::toasts().constLast().title, latin("Startup Apps"));
        QCOMPARE(probes::toasts().constLast().text,
                 latin(opens ? "Opened Startup Apps settings."
                             : "Could not open Startup Apps settings."));
    }

    void everythingFits()
    {
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        const QWidget *page = window->startup.page;
        QCOMPARE(page->size(), window->pageStack->size());
        const QSize needed = page->layout()->minimumSize();
        QVERIFY(needed.width() <= page->width() && needed.height() <= page->height());
        for (int row = 0; row < table->rowCount(); ++row) {
            for (int column = 0; column < table->columnCount(); ++column) {
                const auto *cell = table->item(row, column);
                const QRect place = table->visualItemRect(cell);
                QVERIFY(table->viewport()->rect().contains(place));
                QVERIFY(table->fontMetrics().horizontalAdvance(cell->text()) < place.width() - 6);
                QVERIFY(table->fontMetrics().height() <= place.height());
            }
        }
    }

private:
    static QStringList allRows()
    {
        return {latin("Windows Security Notification|Microsoft Corporation|Low"),
                latin("OneDrive|Microsoft Corporation|Medium"),
                latin("Steam Client Bootstrapper|Valve Corporation|High"),
                latin("Discord|Discord Inc.|Medium"),
                latin("NVIDIA Container|NVIDIA Corporation|Low")};
    }

    QStringList visibleRows() const
    {
        QStringList rows;
        for (int row = 0; row < table->rowCount(); ++row) {
            if (!table->isRowHidden(row)) {
                QStringList cells;
                for (int column = 0; column < table->columnCount(); ++column) {
                    cells.append(table->item(row, column)->text());
                }
                rows.append(cells.join(QLatin1Char('|')));
            }
        }
        return rows;
    }

    std::unique_ptr<MainWindow> window;
    QTableWidget *table = nullptr;
};

QTEST_MAIN(StartupPageTest)
#include "StartupPageTest.moc"
