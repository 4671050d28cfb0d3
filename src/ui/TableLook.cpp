#include "ui/TableLook.h"

#include <QHeaderView>
#include <QTableView>

void applyTableLook(QTableView *table)
{
    const QString sheet =
        QStringLiteral("QHeaderView { background: transparent; border: none;}"
                       "QHeaderView::section { background: rgb(30, 47, 80); color: #f2f6ff; "
                       "border: none; border-right: 1px solid rgba(193, 222, 255, 60); "
                       "border-bottom: 1px solid rgba(193, 222, 255, 92); padding: 4px 6px;}");
    table->horizontalHeader()->setStyleSheet(sheet);
}
