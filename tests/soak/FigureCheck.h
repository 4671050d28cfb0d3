// Whether the figures of the processes can be true.
#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>

class QTableWidget;

// Looks at the table, whatever page is shown. GUI thread.
class FigureCheck : public QObject
{
    Q_OBJECT

public:
    explicit FigureCheck(QTableWidget *checked);

    int rows = 0; // that were looked at
    double highestCpu = 0; // percent of one processor
    QStringList complaints;

private:
    void look();
    double number(int row, int column) const; // negative when there is none

    QTableWidget *table;
    QTimer looking;
};
