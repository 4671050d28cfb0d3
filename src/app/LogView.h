// A view of the activity log. File-local recipe of the pages that show one.
#pragma once

class QTextEdit;
class QWidget;
class QString;

// Read-only, grows without limit, keeps no undo history. Child of `parent`.
QTextEdit *createLogView(QWidget *parent, const QString &accessibleName);
