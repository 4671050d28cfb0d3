// From the process's entry to its exit code.
#pragma once

// Builds the application and its window under a wait cursor, shows the window, and runs until it is closed. Returns the
// event loop's result: 0 after a normal close.
int qMain(int argc, char **argv);
