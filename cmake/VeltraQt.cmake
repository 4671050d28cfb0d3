# Finds Qt and says plainly what is wrong when it is missing or too old.
set(veltra_qt_minimum 6.4)

find_package(Qt6 QUIET COMPONENTS Core Gui Widgets)
if(NOT Qt6_FOUND)
    message(FATAL_ERROR "Qt ${veltra_qt_minimum} or newer is needed (modules Core, Gui and Widgets), and none was found. "
                        "On Debian: apt-get install qt6-base-dev. For Windows: scripts/build-windows-qt.sh.")
endif()
if(Qt6_VERSION VERSION_LESS veltra_qt_minimum)
    message(FATAL_ERROR "Qt ${Qt6_VERSION} is too old: Qt ${veltra_qt_minimum} or newer is needed.")
endif()
if(VELTRA_TESTS OR VELTRA_BENCHMARKS)
    find_package(Qt6 ${veltra_qt_minimum} REQUIRED COMPONENTS Test)
endif()
