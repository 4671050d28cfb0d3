// What the tests of the window's actions share: answers to its questions, its log, its toasts.
#pragma once

#include "app/MainWindow.h"
#include "notify/DesktopToast.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <algorithm>

namespace probes {

// The log's lines without their time stamps.
inline QStringList logLines(const QTextEdit *view)
{
    QStringList lines = view->toPlainText().split(QLatin1Char('\n'));
    for (QString &line : lines) {
        line = line.mid(11);
    }
    return lines;
}

struct ToastTexts
{
    QString title;
    QString text;
    QString state;

    bool operator==(const ToastTexts &) const = default;
};

// All standing toasts, oldest first.
inline QList<ToastTexts> toasts()
{
    QList<ToastTexts> found;
    const auto windows = QApplication::topLevelWidgets();
    QList<DesktopToast *> standing;
    for (QWidget *window : windows) {
        if (auto *toast = qobject_cast<DesktopToast *>(window);
            toast != nullptr && toast->isVisible()) {
            standing.append(toast);
        }
    }
    std::sort(standing.begin(), standing.end(), [](const DesktopToast *a, const DesktopToast *b) {
        return a->y() < b->y();
    });
    for (const DesktopToast *toast : standing) {
        const auto text = [toast](const char *name) {
            return toast->findChild<QLabel *>(QLatin1String(name))->text();
        };
        found.append({text("toastTitle"), text("toastText"), text("toastState")});
    }
    return found;
}

inline void closeToasts()
{
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (qobject_cast<DesktopToast *>(window) != nullptr) {
            window->findChild<QPushButton *>(QStringLiteral("toastClose"))->click();
        }
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

enum class Answer { Yes, No, Escape, Close };

// Waits for the next question, keeps what it asks, and answers it.
class Answering : public QObject
{
public:
    explicit Answering(Answer wanted)
        : answer(wanted)
    {
        connect(&timer, &QTimer::timeout, this, &Answering::look);
        timer.start(5);
    }

    QString title;
    QString question;
    QMessageBox::StandardButtons buttons;
    int asked = 0;

private:
    void look()
    {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (box == nullptr || !box->isVisible()) {
            return;
        }
        timer.stop();
        ++asked;
        title = box->windowTitle();
        question = box->text();
        buttons = box->standardButtons();
        switch (answer) {
        case Answer::Yes:
            box->button(QMessageBox::Yes)->click();
            break;
        case Answer::No:
            box->button(QMessageBox::No)->click();
            break;
        case Answer::Escape:
            QTest::keyClick(box, Qt::Key_Escape);
            break;
        case Answer::Close:
            box->close();
            break;
        }
    }

    Answer answer;
    QTimer timer;
};

} // namespace probes
