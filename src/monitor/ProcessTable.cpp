// The table of the "Proc Watch" page.
#include "monitor/ProcessWatcherWidget.h"
#include "ui/TableLook.h"

#include <QHeaderView>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace {

enum Column {
    NameColumn,
    PidColumn,
    CpuColumn,
    MemoryColumn,
    DiskColumn,
    StatusColumn,
    ColumnCount
};

// A cell that is sorted by a number instead of its text.
class NumericItem : public QTableWidgetItem
{
public:
    NumericItem(const QString &text, double sortKey)
        : QTableWidgetItem(text)
        , key(sortKey)
    { }

    bool operator<(const QTableWidgetItem &other) const override
    {
        if (const auto *numeric = dynamic_cast<const NumericItem *>(&other)) {
            return key < numeric->key;
        }
        return QTableWidgetItem::operator<(other);
    }

private:
    double key;
};

QTableWidgetItem *createDecimal(double value)
{
    return new NumericItem(QString::number(value, 'f', 1), value);
}

} // namespace

void ProcessWatcherWidget::setupTable()
{
    table = new QTableWidget(0, ColumnCount, this);
    table->setHorizontalHeaderLabels({QStringLiteral("Process Name"),
                                      QStringLiteral("PID"),
                                      QStringLiteral("CPU %"),
                                      QStringLiteral("Memory (MB)"),
                                      QStringLiteral("Disk (KB/s)"),
                                      QStringLiteral("Status")});
    table->setSortingEnabled(true);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table->verticalHeader()->hide();
    applyTableLook(table);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers); // what is shown is what is ended
    table->setWordWrap(false);
    table->setTabKeyNavigation(false); // Tab goes on, not through thousands of cells and around
    table->setAccessibleName(QStringLiteral("Processes"));
    qobject_cast<QVBoxLayout *>(layout())->addWidget(table, 1);
}

void ProcessWatcherWidget::rebuildTable()
{
    table->setSortingEnabled(false);
    table->setRowCount(0);
    fillTable();
    table->setSortingEnabled(true);
    table->sortItems(CpuColumn, Qt::DescendingOrder);
}

void ProcessWatcherWidget::fillTable()
{
    const auto rows = std::count_if(
        lastRows.cbegin(), lastRows.cend(), [this](const ProcessRow &row) { return isShown(row); });
    table->setRowCount(static_cast<int>(rows));
    // The view hears of all cells at once, with the sorting that follows.
    const QSignalBlocker quiet(table->model());
    int tableRow = 0;
    for (const ProcessRow &row : std::as_const(lastRows)) {
        if (isShown(row)) {
            fillRow(tableRow, row);
            ++tableRow;
        }
    }
}

bool ProcessWatcherWidget::isShown(const ProcessRow &row) const
{
    return filter.isEmpty() || row.name.indexOf(filter, 0, Qt::CaseInsensitive) != -1;
}

void ProcessWatcherWidget::fillRow(int tableRow, const ProcessRow &row)
{
    table->setItem(tableRow, NameColumn, new QTableWidgetItem(row.name));
    table->setItem(tableRow, PidColumn, new NumericItem(QString::number(row.pid), row.pid));
    table->setItem(tableRow, CpuColumn, createDecimal(row.cpuPercent));
    table->setItem(tableRow, MemoryColumn, createDecimal(row.memoryMB));
    table->setItem(tableRow, DiskColumn, createDecimal(row.diskKBps));
    table->setItem(tableRow, StatusColumn, new QTableWidgetItem(row.status));
}
