#include "app/LogView.h"

#include <QTextEdit>

QTextEdit *createLogView(QWidget *parent, const QString &accessibleName)
{
    auto *view = new QTextEdit(parent);
    view->setReadOnly(true);
    view->setUndoRedoEnabled(false);
    view->setAccessibleName(accessibleName);
    return view;
}
