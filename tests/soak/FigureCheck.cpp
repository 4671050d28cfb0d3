#include "soak/FigureCheck.h"

#include <QTableWidget>
#include <QThread>
#include <algorithm>
#include <chrono>
#include <cmath>

namespace {

using namespace std::chrono_literals;

constexpr auto kBetweenLooks = 700ms;
constexpr int kCpuColumn = 2;
constexpr int kDiskColumn = 4;
constexpr qsizetype kMostComplaints = 10;

// The counts come in hundredths of a second, and a reading gets to the same process sooner or later than the one before.
constexpr double kTolerance = 1.25;

double highestPossible()
{
    return 100.0 * QThread::idealThreadCount() * kTolerance;
}

} // namespace

FigureCheck::FigureCheck(QTableWidget *checked)
    : table(checked)
{
    connect(&looking, &QTimer::timeout, this, &FigureCheck::look);
    looking.start(kBetweenLooks);
}

double FigureCheck::number(int row, int column) const
{
    const QTableWidgetItem *cell = table->item(row, column);
    bool isNumber = false;
    const double value = cell != nullptr ? cell->text().toDouble(&isNumber) : 0;
    return isNumber && std::isfinite(value) ? value : -1;
}

void FigureCheck::look()
{
    for (int row = 0; row < table->rowCount(); ++row) {
        const double cpu = number(row, kCpuColumn);
        const bool isPossible =
            cpu >= 0 && cpu <= highestPossible() && number(row, kDiskColumn) >= 0;
        highestCpu = std::max(highestCpu, cpu);
        if (!isPossible && complaints.size() < kMostComplaints) {
            QStringList texts;
            for (int column = 0; column < table->columnCount(); ++column) {
                const QTableWidgetItem *cell = table->item(row, column);
                texts.append(cell != nullptr ? cell->text() : QStringLiteral("nothing"));
            }
            complaints.append(QStringLiteral("cannot be: ") + texts.join(QStringLiteral(", ")));
        }
        ++rows;
    }
}
