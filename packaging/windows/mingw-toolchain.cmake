# Cross compilation from Linux to 64-bit Windows with MinGW-w64 (posix thread model: std::thread and std::mutex work).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(veltra_triplet x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${veltra_triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${veltra_triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${veltra_triplet}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${veltra_triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)
