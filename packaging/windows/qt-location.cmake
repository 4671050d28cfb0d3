# What `cmake --preset windows` needs besides the compiler: Qt, and something that runs the tests.
#
# The cross-built Qt is found by itself: an explicit VELTRA_WINDOWS_QT wins, else the script that
# builds and caches the toolkit is asked (it answers at once when the toolkit is there).
if(NOT VELTRA_WINDOWS_QT)
    execute_process(
        COMMAND ${CMAKE_CURRENT_LIST_DIR}/../../scripts/build-windows-qt.sh
        OUTPUT_VARIABLE veltra_qt_output OUTPUT_STRIP_TRAILING_WHITESPACE
        RESULT_VARIABLE veltra_qt_result)
    if(NOT veltra_qt_result EQUAL 0)
        message(FATAL_ERROR "Qt for Windows is not available (scripts/build-windows-qt.sh failed).")
    endif()
    string(REGEX REPLACE ".*\n" "" veltra_qt_output "${veltra_qt_output}")
    set(VELTRA_WINDOWS_QT "${veltra_qt_output}" CACHE PATH "Where the cross-built Qt for Windows is installed")
endif()

execute_process(COMMAND qtpaths6 --query QT_INSTALL_LIBS OUTPUT_VARIABLE veltra_host_libs OUTPUT_STRIP_TRAILING_WHITESPACE)
list(APPEND CMAKE_PREFIX_PATH "${VELTRA_WINDOWS_QT}")
list(APPEND CMAKE_FIND_ROOT_PATH "${VELTRA_WINDOWS_QT}")
set(QT_HOST_PATH /usr CACHE PATH "Qt whose tools run on this machine")
set(QT_HOST_PATH_CMAKE_DIR "${veltra_host_libs}/cmake" CACHE PATH "CMake files of that Qt")

# Tests run in the Wine sandbox.
get_filename_component(veltra_wine_run ${CMAKE_CURRENT_LIST_DIR}/../../scripts/wine-run.sh ABSOLUTE)
set(CMAKE_CROSSCOMPILING_EMULATOR ${veltra_wine_run})
