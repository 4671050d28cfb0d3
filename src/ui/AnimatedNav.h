// The class of the main window's sidebar.
#pragma once

#include "ui/SidebarNav.h"

// A SidebarNav with a class name of its own, and nothing else.
class AnimatedNav : public SidebarNav
{
    Q_OBJECT

public:
    explicit AnimatedNav(QWidget *parent = nullptr);
};
