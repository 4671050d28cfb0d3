# GoogleTest for the floors without Qt: the installed library natively, and the sources of the package `googletest` where
# the library has to be cross-compiled. Either way the targets are GTest::gtest, GTest::gmock_main and so on.
include(VeltraQtTest) # for the sandbox

if(CMAKE_CROSSCOMPILING)
    set(VELTRA_GOOGLETEST_SOURCE /usr/src/googletest CACHE PATH "Sources of GoogleTest")
    if(NOT EXISTS ${VELTRA_GOOGLETEST_SOURCE}/CMakeLists.txt)
        message(FATAL_ERROR "The sources of GoogleTest are needed in ${VELTRA_GOOGLETEST_SOURCE}. "
                            "On Debian: apt-get install googletest.")
    endif()
    set(INSTALL_GTEST OFF)
    add_subdirectory(${VELTRA_GOOGLETEST_SOURCE} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
else()
    find_package(GTest REQUIRED)
endif()

# veltra_add_gtest(NAME SOURCES ... LINK ...): a GoogleTest program, registered as one test with a sandbox of its own.
# Nothing is run during the build, and one process for all its cases spares Wine's start for each of them.
function(veltra_add_gtest name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LINK} GTest::gmock_main veltra_warnings)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    add_test(NAME ${name} COMMAND ${name})
    veltra_sandbox_test(${name})
endfunction()
