// The start-up entries: a fixed list to search in, and the way to the system's own settings.
#include "app/MainWindow.h"

#include "ui/GlassCard.h"
#include "ui/Glow.h"
#include "ui/ScrollPage.h"
#include "ui/TableLook.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

using Entry = std::array<const char *, 3>;

constexpr Entry kHeaders{"Startup Entry", "Publisher", "Impact"};
constexpr std::array<Entry, 5> kEntries{{
    {"Windows Security Notification", "Microsoft Corporation", "Low"},
    {"OneDrive", "Microsoft Corporation", "Medium"},
    {"Steam Client Bootstrapper", "Valve Corporation", "High"},
    {"Discord", "Discord Inc.", "Medium"},
    {"NVIDIA Container", "NVIDIA Corporation", "Low"},
}};

void appendRow(QTableWidget *table, const Entry &entry)
{
    const int row = table->rowCount();
    table->insertRow(row);
    int column = 0;
    for (const char *text : entry) {
        table->setItem(row, column, new QTableWidgetItem(QString::fromLatin1(text)));
        ++column;
    }
}

QTableWidget *createTable(QWidget *parent)
{
    auto *table = new QTableWidget(0, static_cast<int>(kHeaders.size()), parent);
    QStringList headers;
    for (const char *header : kHeaders) {
        headers.append(QString::fromLatin1(header));
    }
    table->setHorizontalHeaderLabels(headers);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table->horizontalHeader()->setStretchLastSection(true);
    applyTableLook(table);
    table->horizontalHeader()->setHighlightSections(false); // all of the row is selected anyway
    table->verticalHeader()->hide(); // numbers that would not follow the search
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setTabKeyNavigation(false); // Tab goes on to the button
    table->setAccessibleName(QStringLiteral("Startup entries"));
    for (const Entry &entry : kEntries) {
        appendRow(table, entry);
    }
    return table;
}

bool isInRow(const QTableWidget *table, int row, const QString &text)
{
    for (int column = 0; column < table->columnCount(); ++column) {
        const QTableWidgetItem *cell = table->item(row, column);
        if (cell != nullptr && cell->text().indexOf(text, 0, Qt::CaseInsensitive) >= 0) {
            return true;
        }
    }
    return false;
}

// The text is taken as typed, blanks included.
void showMatchingRows(QTableWidget *table, const QString &text)
{
    for (int row = 0; row < table->rowCount(); ++row) {
        table->setRowHidden(row, !isInRow(table, row, text));
    }
}

} // namespace

void MainWindow::setupStartupPage()
{
    auto *page = new QWidget(pageStack);
    QVBoxLayout *cards = createCardLayout(page);
    startup.page = page;
    GlassCard *card = createGlassCard(page, QStringLiteral("Startup Manager"));
    auto *layout = qobject_cast<QVBoxLayout *>(card->layout());

    auto *note = new QLabel(
        QStringLiteral("Read-only startup listing with safe helper actions. Use Windows Startup "
                       "settings to toggle reliably."),
        card);
    note->setWordWrap(true);
    layout->addWidget(note);

    startup.search = new QLineEdit(card);
    startup.search->setPlaceholderText(QStringLiteral("Search startup entries..."));
    startup.search->setAccessibleName(QStringLiteral("Search startup entries"));
    layout->addWidget(startup.search);

    startup.table = createTable(card);
    layout->addWidget(startup.table, 1);

    startup.openSettings = new QPushButton(QStringLiteral("Open Startup Apps Settings"), card);
    layout->addWidget(startup.openSettings);
    applyGlow(card, standardGlowColor(), kStandardGlowRadius);
    cards->addWidget(card, 1);

    connect(startup.search,
            &QLineEdit::textChanged,
            startup.table,
            [table = startup.table](const QString &text) { showMatchingRows(table, text); });
    connect(startup.openSettings, &QPushButton::clicked, this, &MainWindow::onOpenStartupApps);
}
