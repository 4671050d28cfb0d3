#include "ui/AnimatedNav.h"

AnimatedNav::AnimatedNav(QWidget *parent)
    : SidebarNav(parent)
{ }
