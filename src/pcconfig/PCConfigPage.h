// The "PC Config" page.
#pragma once

#include <QWidget>

// For now the page's card with its title. GUI thread.
class PCConfigPage : public QWidget
{
    Q_OBJECT

public:
    explicit PCConfigPage(QWidget *parent);
};
