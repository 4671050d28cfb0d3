// The activity log: one line per message, in two views.
#include "app/MainWindow.h"

#include <QDateTime>
#include <QScrollBar>
#include <QTextCursor>
#include <QTextEdit>

namespace {

// Like QTextEdit::append, which takes a text with a tag in it for markup: here the line stays as it was typed.
void appendPlainLine(QTextEdit *view, const QString &line)
{
    if (view == nullptr) {
        return;
    }
    QScrollBar *bar = view->verticalScrollBar();
    const bool atBottom = bar->value() >= bar->maximum();
    QTextCursor cursor(view->document());
    cursor.movePosition(QTextCursor::End);
    cursor.beginEditBlock();
    if (!view->document()->isEmpty()) {
        cursor.insertBlock();
    }
    cursor.insertText(line);
    cursor.endEditBlock();
    if (atBottom) {
        bar->setValue(bar->maximum());
    }
}

} // namespace

void MainWindow::log(const QString &message)
{
    const QString time = QDateTime::currentDateTime().toString(QStringLiteral("hh:mm:ss"));
    const QString line = QStringLiteral("[") + time + QStringLiteral("] ") + message;
    appendPlainLine(activityLogView, line);
    appendPlainLine(historyLogView, line);
}

void MainWindow::onShowLogFromToast()
{
    if (activityLogView == nullptr) {
        return;
    }
    activityLogView->setFocus(Qt::OtherFocusReason);
    activityLogView->verticalScrollBar()->setValue(activityLogView->verticalScrollBar()->maximum());
}
