// The page itself: its structure, its rows, its report, and how the keyboard and a screen reader get along with it. No
// PowerShell is on PATH; the machine is a scripted one.
#include "pcconfig/PCConfigPage.h"
#include "fakes/ScriptedHardware.h"
#include "monitor/ByteFormat.h"
#include "pcconfig/DisplayTexts.h"
#include "pcconfig/PowerShellFake.h"

#include <QAccessible>
#include <QClipboard>
#include <QDateTime>
#include <QFormLayout>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QOperatingSystemVersion>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStorageInfo>
#include <QVBoxLayout>
#include <memory>
#include <random>

namespace {

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

struct CardPlace
{
    const char *title;
    PCConfigPage::Section PCConfigPage::*section;
    QStringList keys;
    int row;
    int column;
    int columns;
};

QList<CardPlace> cardPlaces()
{
    const auto keys = [](const char *commas) {
        return text(commas).split(QLatin1Char(','));
    };
    return {{"OS", &PCConfigPage::osSection, keys("Name,Version,Build,Kernel,Machine"), 0, 0, 1},
            {"CPU",
             &PCConfigPage::cpuSection,
             keys("Name,Manufacturer,Cores,Logical Processors,Max Clock (MHz)"),
             0,
             1,
             1},
            {"GPU", &PCConfigPage::gpuSection, keys("Name,VRAM,Driver,Resolution"), 1, 0, 1},
            {"RAM", &PCConfigPage::ramSection, keys("Total,Available,Speed,Type"), 1, 1, 1},
            {"Storage",
             &PCConfigPage::storageSection,
             keys("System Drive,Total,Free,Filesystem"),
             2,
             0,
             1},
            {"Motherboard",
             &PCConfigPage::motherboardSection,
             keys("Manufacturer,Product,Serial"),
             2,
             1,
             1},
            {"Display",
             &PCConfigPage::displaySection,
             keys("Primary,Resolution,Refresh,Scale"),
             3,
             0,
             2}};
}

platform::HardwareInventory workstation()
{
    platform::HardwareInventory inventory;
    inventory.processorName = "Example 9000";
    inventory.processorManufacturer = "GenuineExample";
    inventory.processorCores = "8";
    inventory.processorThreads = "16";
    inventory.processorMaxClock = "4200";
    inventory.graphicsName = "Example Graphics";
    inventory.graphicsMemory = "8589934592";
    inventory.graphicsDriver = "exdrm 6.1.0";
    inventory.memoryTotal = "34359738368";
    inventory.memoryAvailable = "17179869184";
    inventory.memorySpeed = "3200";
    inventory.memoryType = "26";
    inventory.boardManufacturer = "Example Boards";
    inventory.boardProduct = "Board \xc3\xa9"; // UTF-8
    inventory.boardSerial = "S-1";
    return inventory;
}

// What the report says of a card.
QString block(const QString &report, const QString &name)
{
    const auto start = report.indexOf(QLatin1Char('[') + name + text("]\n"));
    return report.mid(start, report.indexOf(text("\n\n"), start) - start + 2);
}

} // namespace

class PCConfigPageTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        noShell = std::make_unique<PowerShellFake>();
        fakes::scriptedHardware() = {};
        page = std::make_unique<PCConfigPage>(nullptr);
    }

    void cleanup()
    {
        page.reset();
        noShell.reset();
    }

    void buttonRow()
    {
        const auto *root = qobject_cast<QVBoxLayout *>(page->layout());
        QVERIFY(root != nullptr);
        QCOMPARE(root->contentsMargins(), QMargins());
        QCOMPARE(root->spacing(), 12);
        QCOMPARE(root->count(), 2);
        const auto *row = qobject_cast<QHBoxLayout *>(root->itemAt(0)->layout());
        QVERIFY(row != nullptr);
        QCOMPARE(row->spacing(), 10);
        QCOMPARE(row->count(), 3);
        QCOMPARE(row->itemAt(0)->widget(), page->refreshButton);
        QCOMPARE(row->itemAt(1)->widget(), page->copyButton);
        QVERIFY(row->itemAt(2)->spacerItem() != nullptr);
        QCOMPARE(row->stretch(2), 1);
        QCOMPARE(root->stretch(0), 0);
        QCOMPARE(root->stretch(1), 1);
        QCOMPARE(page->refreshButton->text(), text("Refresh"));
        QCOMPARE(page->copyButton->text(), text("Copy Report"));
        QCOMPARE(page->refreshButton->parentWidget(), page.get());
        QCOMPARE(page->copyButton->parentWidget(), page.get());
    }

    void scrollArea()
    {
        const QLayout *layout = page->layout();
        QVERIFY(layout != nullptr);
        const QLayoutItem *item = layout->itemAt(1);
        QVERIFY(item != nullptr);
        const auto *area = qobject_cast<QScrollArea *>(item->widget());
        QVERIFY(area != nullptr);
        QVERIFY(area->widgetResizable()); // NOLINT(clang-analyzer-core.CallAndMessage) asked above
        QCOMPARE(area->frameShape(), QFrame::NoFrame);
        QVERIFY(!area->widget()->autoFillBackground());
        QVERIFY(!area->viewport()->autoFillBackground());
        QCOMPARE(grid()->contentsMargins(), QMargins());
        QCOMPARE(grid()->horizontalSpacing(), 12);
        QCOMPARE(grid()->verticalSpacing(), 12);
        QCOMPARE(grid()->columnStretch(0), 1);
        QCOMPARE(grid()->columnStretch(1), 1);
        QCOMPARE(grid()->count(), 7);
    }

    void cards()
    {
        int index = 0;
        for (const CardPlace &expected : cardPlaces()) {
            int row = -1;
            int column = -1;
            int rows = 0;
            int columns = 0;
            grid()->getItemPosition(index, &row, &column, &rows, &columns);
            QCOMPARE((QList<int>{row, column, rows, columns}),
                     (QList<int>{expected.row, expected.column, 1, expected.columns}));
            compareCard(grid()->itemAt(index)->widget(), expected);
            ++index;
        }
    }

    void repeatedKeyReplacesTheEarlierOne()
    {
        PCConfigPage::Section section;
        const std::unique_ptr<QWidget> card(
            page->createSectionCard(text("Twice"), section, {text("A"), text("B"), text("A")}));
        QCOMPARE(section.labels.size(), 2);
        QCOMPARE(card->findChild<QFormLayout *>()->rowCount(), 3);
        page->setValue(section, text("A"), text("one"));
        const auto *form = card->findChild<QFormLayout *>();
        const auto shown = [form](int row) {
            return qobject_cast<QLabel *>(form->itemAt(row, QFormLayout::FieldRole)->widget())
                ->text();
        };
        QCOMPARE(shown(0), text("Unknown"));
        QCOMPARE(shown(2), text("one"));
    }

    void valuesAreTrimmedOrUnknown()
    {
        PCConfigPage::Section section;
        const std::unique_ptr<QWidget> card(
            page->createSectionCard(text("Card"), section, {text("Key")}));
        const QLabel *label = section.labels.value(text("Key"));
        QCOMPARE(label->text(), text("Unknown"));
        page->setValue(section, text("Key"), text(" \r\n value with  blanks\t\n"));
        QCOMPARE(label->text(), text("value with  blanks"));
        page->setValue(section, text("Key"), text(" \t\r\n"));
        QCOMPARE(label->text(), text("Unknown"));
        page->setValue(section, text("key"), text("other case"));
        page->setValue(section, text("Missing"), text("x"));
        QCOMPARE(label->text(), text("Unknown"));
        QCOMPARE(section.labels.size(), 1);
        QCOMPARE(page->valueOrUnknown(text(" a ")), text("a"));
        QCOMPARE(page->valueOrUnknown(QString()), text("Unknown"));
    }

    void sizesAreLikeAllOthers()
    {
        std::mt19937_64 random(7);
        for (int shift = 0; shift < 64; ++shift) {
            for (const quint64 bytes : std::initializer_list<quint64>{
                     1ULL << shift, (1ULL << shift) - 1, random() >> shift}) {
                QCOMPARE(PCConfigPage::formatBytes(bytes), formatBytesULongLong(bytes));
            }
        }
        QCOMPARE(PCConfigPage::formatBytes(0), text("0 B"));
        QCOMPARE(PCConfigPage::formatBytes(4293918720), text("4.0 GB"));
        QCOMPARE(PCConfigPage::formatBytes(~0ULL), text("16777216.0 TB"));
    }

    void platformsInventory()
    {
        fakes::scriptedHardware().inventory = workstation();
        page->refreshInfo();
        QCOMPARE(fakes::scriptedHardware().queries, 2); // the constructor, and now
        const QString report = page->buildReport();
        QCOMPARE(block(report, text("CPU")),
                 text("[CPU]\nCores: 8\nLogical Processors: 16\nManufacturer: GenuineExample\n"
                      "Max Clock (MHz): 4200\nName: Example 9000\n\n"));
        QCOMPARE(block(report, text("RAM")),
                 text("[RAM]\nAvailable: 16.0 GB\nSpeed: 3200 MHz\nTotal: 32.0 GB\nType: 26\n\n"));
        QCOMPARE(block(report, text("Motherboard")),
                 text("[Motherboard]\nManufacturer: Example Boards\nProduct: Board \xe9\n"
                      "Serial: S-1\n\n"));
        QVERIFY(block(report, text("GPU"))
                    .startsWith(text("[GPU]\nDriver: exdrm 6.1.0\nName: Example Graphics\n")));
        QVERIFY(block(report, text("GPU")).endsWith(text("VRAM: 8.0 GB\n\n")));
        fakes::scriptedHardware().inventory = {};
        page->refreshInfo(); // what is no longer known is not kept
        QCOMPARE(block(page->buildReport(), text("RAM")),
                 text("[RAM]\nAvailable: Unknown\nSpeed: Unknown\nTotal: Unknown\n"
                      "Type: Unknown\n\n"));
    }

    void rowsOfTheToolkit()
    {
        const auto os = [this](const char *key) {
            return page->osSection.labels.value(text(key))->text();
        };
        QCOMPARE(os("Name"), QSysInfo::prettyProductName());
        const QString type = QOperatingSystemVersion::current().name();
        QCOMPARE(os("Version"), type.isEmpty() ? text("Testix") : type);
        QCOMPARE(os("Build"), QSysInfo::kernelVersion());
        QCOMPARE(os("Kernel"), QSysInfo::kernelType());
        QCOMPARE(os("Machine"), QSysInfo::currentCpuArchitecture());
        const QStorageInfo root = QStorageInfo::root();
        const auto &storage = page->storageSection.labels;
        QCOMPARE(storage.value(text("System Drive"))->text(), root.rootPath());
        QCOMPARE(storage.value(text("Total"))->text(),
                 formatBytesULongLong(static_cast<quint64>(root.bytesTotal())));
        // Less than is free where some of it is reserved. Others may write meanwhile.
        QTRY_COMPARE(
            freshValue(page->storageSection, text("Free")),
            formatBytesULongLong(static_cast<quint64>(QStorageInfo::root().bytesAvailable())));
        QCOMPARE(storage.value(text("Filesystem"))->text(),
                 QString::fromLatin1(root.fileSystemType()));
        const QScreen *screen = QGuiApplication::primaryScreen();
        QCOMPARE(page->displaySection.labels.value(text("Primary"))->text(),
                 page->valueOrUnknown(screen->name()));
        const QString resolution =
            text("%1 x %2").arg(screen->size().width()).arg(screen->size().height());
        QCOMPARE(page->displaySection.labels.value(text("Resolution"))->text(), resolution);
        QCOMPARE(page->gpuSection.labels.value(text("Resolution"))->text(), resolution);
    }

    void displayRows()
    {
        const DisplayTexts expected{
            text("DP-1"), text("2560 x 1440"), text("60.0 Hz"), text("1.50x")};
        QCOMPARE(displayTexts(text("DP-1"), QSize(2560, 1440), 59.951, 1.5), expected);
        QCOMPARE(displayTexts({}, QSize(1, 1), 143.97, 1.25).refresh, text("144.0 Hz"));
        QCOMPARE(displayTexts({}, QSize(1, 1), 0, 1).scale, text("1.00x"));
        const QString unknown = text("Unknown");
        QCOMPARE(displayTexts(nullptr), (DisplayTexts{unknown, unknown, unknown, unknown}));
    }

    void reportByteByByte()
    {
        forgetEverything();
        const QDateTime moment(QDate(2026, 11, 16), QTime(1, 45, 0, 789));
        QCOMPARE(page->buildReportDated(moment).toUtf8(),
                 QByteArray("Veltra Premium C++ PC Optimizer - PC Config Report\n"
                            "Generated: 2026-11-16T01:45:00\n"
                            "\n"
                            "[OS]\n"
                            "Build: Unknown\n"
                            "Kernel: Unknown\n"
                            "Machine: Unknown\n"
                            "Name: Unknown\n"
                            "Version: Unknown\n"
                            "\n"
                            "[CPU]\n"
                            "Cores: Unknown\n"
                            "Logical Processors: Unknown\n"
                            "Manufacturer: Unknown\n"
                            "Max Clock (MHz): Unknown\n"
                            "Name: Unknown\n"
                            "\n"
                            "[GPU]\n"
                            "Driver: Unknown\n"
                            "Name: Unknown\n"
                            "Resolution: Unknown\n"
                            "VRAM: Unknown\n"
                            "\n"
                            "[RAM]\n"
                            "Available: Unknown\n"
                            "Speed: Unknown\n"
                            "Total: Unknown\n"
                            "Type: Unknown\n"
                            "\n"
                            "[Storage]\n"
                            "Filesystem: Unknown\n"
                            "Free: Unknown\n"
                            "System Drive: Unknown\n"
                            "Total: Unknown\n"
                            "\n"
                            "[Motherboard]\n"
                            "Manufacturer: Unknown\n"
                            "Product: Unknown\n"
                            "Serial: Unknown\n"
                            "\n"
                            "[Display]\n"
                            "Primary: Unknown\n"
                            "Refresh: Unknown\n"
                            "Resolution: Unknown\n"
                            "Scale: Unknown\n"
                            "\n"));
    }

    void everyRowOfTheReportIsItsLabel()
    {
        const QString report = page->buildReport();
        for (const CardPlace &card : cardPlaces()) {
            const QString rows = block(report, text(card.title));
            for (const QString &key : card.keys) {
                const QLabel *label = ((*page).*card.section).labels.value(key);
                QVERIFY(rows.contains(QLatin1Char('\n') + key + text(": ") + label->text()
                                      + QLatin1Char('\n')));
            }
        }
        QVERIFY(!report.contains(QLatin1Char('\r')));
    }

    void reportIsDatedNow()
    {
        const auto before = QDateTime::currentDateTime();
        const QString report = page->buildReport();
        const auto after = QDateTime::currentDateTime();
        const auto dated = QDateTime::fromString(
            report.section(QLatin1Char('\n'), 1, 1).mid(text("Generated: ").size()), Qt::ISODate);
        QVERIFY(dated.isValid());
        QVERIFY(dated >= before.addSecs(-1) && dated <= after);
    }

    void copyPutsTheReportOnTheClipboard()
    {
        QGuiApplication::clipboard()->setText(text("before"));
        const auto queries = fakes::scriptedHardware().queries;
        QTest::mouseClick(page->copyButton, Qt::LeftButton);
        const QString copied = QGuiApplication::clipboard()->text();
        QVERIFY(copied.startsWith(
            text("Veltra Premium C++ PC Optimizer - PC Config Report\nGenerated: ")));
        QCOMPARE(copied.section(QLatin1Char('\n'), 2),
                 page->buildReport().section(QLatin1Char('\n'), 2));
        QCOMPARE(fakes::scriptedHardware().queries, queries); // it asks nobody
        QVERIFY(page->copyButton->isEnabled());
    }

    void refreshButtonCollectsAgain()
    {
        QCOMPARE(fakes::scriptedHardware().queries, 1);
        QTest::mouseClick(page->refreshButton, Qt::LeftButton);
        QTest::mouseClick(page->refreshButton, Qt::LeftButton);
        QCOMPARE(fakes::scriptedHardware().queries, 3);
    }

    void heldKeyRefreshesOnce()
    {
        page->show();
        page->refreshButton->setFocus();
        for (int i = 0; i < 20; ++i) {
            QKeyEvent press(
                QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, text(" "), i > 0 /* repeated */);
            QCoreApplication::sendEvent(page->refreshButton, &press);
        }
        QKeyEvent release(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier);
        QCoreApplication::sendEvent(page->refreshButton, &release);
        QCOMPARE(fakes::scriptedHardware().queries, 2);
    }

    void refreshFromWithinDoesNothing()
    {
        fakes::scriptedHardware().inventory = workstation();
        fakes::scriptedHardware().onQuery = [this] {
            page->refreshInfo();
            QTest::mouseClick(page->refreshButton, Qt::LeftButton);
        };
        page->refreshInfo();
        QCOMPARE(fakes::scriptedHardware().queries, 2);
        QCOMPARE(page->cpuSection.labels.value(text("Cores"))->text(), text("8"));
        fakes::scriptedHardware().onQuery = {};
        page->refreshInfo(); // and is possible again
        QCOMPARE(fakes::scriptedHardware().queries, 3);
    }

    void screenReaderHearsTheKeyWithTheValue()
    {
        fakes::scriptedHardware().inventory.processorCores = "8";
        page->refreshInfo();
        const auto name = [](QLabel *label) {
            return QAccessible::queryAccessibleInterface(label)->text(QAccessible::Name);
        };
        QCOMPARE(name(page->cpuSection.labels.value(text("Cores"))), text("Cores: 8"));
        QCOMPARE(name(page->cpuSection.labels.value(text("Name"))), text("Name: Unknown"));
        QCOMPARE(QAccessible::queryAccessibleInterface(page->cpuSection.labels.value(text("Name")))
                     ->text(QAccessible::Description),
                 text("CPU"));
        for (const CardPlace &card : cardPlaces()) {
            const auto &labels = ((*page).*card.section).labels;
            for (auto row = labels.cbegin(); row != labels.cend(); ++row) {
                QCOMPARE(name(row.value()), row.key() + text(": ") + row.value()->text());
            }
        }
    }

    void keyboardSelectsAndCopiesAValue()
    {
        fakes::scriptedHardware().inventory = workstation();
        page->refreshInfo();
        page->resize(700, 500);
        page->show();
        QVERIFY(QTest::qWaitForWindowExposed(page.get()));
        page->activateWindow();
        QLabel *value = page->osSection.labels.value(text("Name"));
        page->copyButton->setFocus(Qt::OtherFocusReason);
        for (int i = 0; i < 5 && QApplication::focusWidget() != value; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(QApplication::focusWidget(), value);
        QCOMPARE(value->selectedText(), value->text());
        QTest::keyClick(value, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), value->text());
        QTest::keyClick(value, Qt::Key_Home);
        QTest::keyClick(value, Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(value->selectedText(), value->text().left(1));
        QTest::keyClick(value, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), page->osSection.labels.value(text("Version")));
        QVERIFY(!value->hasSelectedText());
    }

    void mouseSelectsText()
    {
        fakes::scriptedHardware().inventory = workstation();
        page->refreshInfo();
        page->resize(900, 700);
        page->show();
        QVERIFY(QTest::qWaitForWindowExposed(page.get()));
        QLabel *value = page->cpuSection.labels.value(text("Name"));
        QTest::mouseDClick(value, Qt::LeftButton, {}, QPoint(6, value->height() / 2));
        QCOMPARE(value->selectedText().trimmed(), text("Example"));
    }

    void everyRowCanBeReachedByScrolling()
    {
        page->resize(600, 200);
        page->show();
        QVERIFY(QTest::qWaitForWindowExposed(page.get()));
        auto *area = page->findChild<QScrollArea *>();
        QLabel *last = page->displaySection.labels.value(text("Scale"));
        last->setFocus(Qt::TabFocusReason);
        area->ensureWidgetVisible(last);
        QVERIFY(area->verticalScrollBar()->value() > 0);
        QVERIFY(!last->visibleRegion().isEmpty());
    }

    // Nothing is cut off, and nothing has to be scrolled sideways.
    void longValuesWrap()
    {
        const std::string lengthy = "Example Graphics Corporation Longname-H GT2 [Ultra High "
                                    "Definition Graphics 630 with a tail] (rev 05)";
        fakes::scriptedHardware().inventory.graphicsName = lengthy;
        fakes::scriptedHardware().inventory.processorName = lengthy;
        page->refreshInfo();
        page->resize(846, 560);
        page->show();
        QVERIFY(QTest::qWaitForWindowExposed(page.get()));
        const auto *area = page->findChild<QScrollArea *>();
        QCOMPARE(area->horizontalScrollBar()->maximum(), 0);
        const QLabel *value = page->gpuSection.labels.value(text("Name"));
        QVERIFY(value->height() >= value->heightForWidth(value->width()));
        QVERIFY(value->height() > page->gpuSection.labels.value(text("VRAM"))->height());
    }

private:
    QGridLayout *grid() const
    {
        return qobject_cast<QGridLayout *>(page->findChild<QScrollArea *>()->widget()->layout());
    }

    void compareCard(const QWidget *card, const CardPlace &expected)
    {
        QVERIFY(qobject_cast<const QFrame *>(card) != nullptr);
        QCOMPARE(card->objectName(), text("glassCard"));
        const auto *layout = qobject_cast<QVBoxLayout *>(card->layout());
        QCOMPARE(layout->contentsMargins(), QMargins(14, 12, 14, 12));
        QCOMPARE(layout->spacing(), 8);
        QCOMPARE(layout->count(), 3);
        const auto *title = qobject_cast<QLabel *>(layout->itemAt(0)->widget());
        QCOMPARE(title->text(), text(expected.title));
        QCOMPARE(title->objectName(), text("cardTitle"));
        const auto *line = qobject_cast<QFrame *>(layout->itemAt(1)->widget());
        QCOMPARE(line->objectName(), text("cardAccentLine"));
        QCOMPARE(line->minimumHeight(), 2);
        QCOMPARE(line->maximumHeight(), 2);
        compareForm(qobject_cast<QFormLayout *>(layout->itemAt(2)->layout()), expected);
    }

    void compareForm(const QFormLayout *form, const CardPlace &expected)
    {
        QVERIFY(form != nullptr);
        QCOMPARE(form->labelAlignment(), Qt::AlignLeft | Qt::AlignVCenter);
        QCOMPARE(form->formAlignment(), Qt::AlignLeft | Qt::AlignVCenter);
        QCOMPARE(form->horizontalSpacing(), 12);
        QCOMPARE(form->verticalSpacing(), 6);
        QCOMPARE(form->rowCount(), expected.keys.size());
        const auto &labels = ((*page).*expected.section).labels;
        QCOMPARE(labels.size(), expected.keys.size());
        for (int row = 0; row < form->rowCount(); ++row) {
            const QString &key = expected.keys.at(row);
            auto *value =
                qobject_cast<QLabel *>(form->itemAt(row, QFormLayout::FieldRole)->widget());
            QCOMPARE(qobject_cast<QLabel *>(form->labelForField(value))->text(), key + text(":"));
            QCOMPARE(labels.value(key), value);
            QVERIFY(value->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
            QCOMPARE(value->textFormat(), Qt::PlainText);
        }
    }

    QString freshValue(const PCConfigPage::Section &section, const QString &key)
    {
        page->refreshInfo();
        return section.labels.value(key)->text();
    }

    void forgetEverything()
    {
        for (const CardPlace &card : cardPlaces()) {
            for (const QString &key : card.keys) {
                page->setValue((*page).*card.section, key, QString());
            }
        }
    }

    std::unique_ptr<PowerShellFake> noShell;
    std::unique_ptr<PCConfigPage> page;
};

QTEST_MAIN(PCConfigPageTest)
#include "PCConfigPageTest.moc"
