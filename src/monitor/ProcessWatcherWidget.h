// The "Proc Watch" page.
#pragma once

#include <QWidget>

// For now the page's card with its title. GUI thread.
class ProcessWatcherWidget : public QWidget
{
    Q_OBJECT

public:
    explicit ProcessWatcherWidget(QWidget *parent);
};
