// What the program takes while nobody touches it.
#pragma once

#include <QJsonObject>

// Per cent of one core over ten seconds: in each performance mode, and minimised and hidden in the busiest one.
QJsonObject measureRest();

// Resident size, in MiB, after ten seconds and after ten minutes in the busiest mode.
QJsonObject measureMemory();
