// A window that shows the program's widgets one at a time.
#pragma once

#include <QWidget>

class QListWidget;
class QStackedWidget;

// At the left the names, at the right the one that is picked, with the program's theme on it.
class Gallery : public QWidget
{
    Q_OBJECT

public:
    Gallery();

    QListWidget *names;
    QStackedWidget *pages;

protected:
    void showEvent(QShowEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void setupPages();
    void add(const QString &name, QWidget *page) const;
};
