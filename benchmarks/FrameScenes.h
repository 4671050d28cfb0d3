// The real window in the situations whose frames are measured.
#pragma once

#include "FrameMeter.h"

#include <QJsonObject>

// All figures are processor milliseconds per frame, at the window's first size and the ratio that the program runs with.

double floorOfAFrame(); // two blends of the window's size

struct PageCosts // medians
{
    double animated = 0; // the particles moved
    double label = 0; // the page's first label changed
};

// With the shadows of the program, or with the toolkit's own in their place.
PageCosts measurePage(FrameMeter &meter, int page, bool withStockShadows);

// The statistics tick on the Dashboard, its frame included.
double measureTick(FrameMeter &meter, bool withStockShadows);

// 95th percentiles of "log line", "hover", "sidebar", "slider", "accent slider" and "page switch".
QJsonObject measureActions(FrameMeter &meter);
