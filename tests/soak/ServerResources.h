// What the display server holds for this program.
#pragma once

// Windows, pixmaps, graphics contexts, pictures and so on; -1 when the server does not tell. GUI thread.
int serverResources();
