# veltra_add_qttest(NAME SOURCES ... LINK ... [SCALES 1 1.25 2] [XCB]): a Qt Test program, registered once per scale
# factor. It runs without a display unless XCB is given, in the C locale, and in a sandbox of its own: home, data and
# temporary folders lie in the build folder.
function(veltra_add_qttest name)
    cmake_parse_arguments(arg "XCB" "" "SOURCES;LINK;SCALES" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    target_link_libraries(${name} PRIVATE ${arg_LINK} Qt6::Test veltra_warnings)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    if(NOT arg_SCALES)
        set(arg_SCALES 1)
    endif()
    foreach(scale IN LISTS arg_SCALES)
        set(test ${name})
        if(NOT scale EQUAL 1)
            set(test ${name}@${scale})
        endif()
        add_test(NAME ${test} COMMAND ${name})
        veltra_sandbox_test(${test})
        set_property(TEST ${test} APPEND PROPERTY ENVIRONMENT QT_SCALE_FACTOR=${scale})
        if(NOT WIN32 AND NOT arg_XCB)
            set_property(TEST ${test} APPEND PROPERTY ENVIRONMENT QT_QPA_PLATFORM=offscreen)
        endif()
        if(arg_XCB)
            set_tests_properties(${test} PROPERTIES SKIP_RETURN_CODE 77)
        endif()
    endforeach()
endfunction()

# Gives a registered test its own folders and the C locale.
function(veltra_sandbox_test test)
    set(sandbox ${CMAKE_BINARY_DIR}/sandbox/${test})
    file(MAKE_DIRECTORY ${sandbox}/home ${sandbox}/data ${sandbox}/temp ${sandbox}/runtime)
    file(CHMOD ${sandbox}/runtime PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
    set(environment LC_ALL=C)
    # The thread sanitizer would end helpers that start threads after a fork, which it does not follow (die_after_fork).
    if(NOT WIN32) # under Wine the prefix is the sandbox
        list(APPEND environment HOME=${sandbox}/home XDG_DATA_HOME=${sandbox}/data XDG_CONFIG_HOME=${sandbox}/home
             XDG_CACHE_HOME=${sandbox}/home XDG_RUNTIME_DIR=${sandbox}/runtime TEMP=${sandbox}/temp
             TMPDIR=${sandbox}/temp "UBSAN_OPTIONS=print_stacktrace=1"
             "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp"
             "TSAN_OPTIONS=die_after_fork=0:ignore_noninstrumented_modules=1:suppressions=${PROJECT_SOURCE_DIR}/tests/tsan.supp")
    endif()
    set_tests_properties(${test} PROPERTIES ENVIRONMENT "${environment}" TIMEOUT 120)
endfunction()
