// The look of tables.
#pragma once

class QTableView;

// Gives the table's header colours of its own: some platforms' styles paint it light, whatever the palette says, and the
// text on it is light, too. Call it once, when the table is made. GUI thread.
void applyTableLook(QTableView *table);
