# Programs that feed a parser whatever makes it take another path, until it breaks. They need clang, and everything that
# they link is built with its coverage and with the sanitizers: see the preset "fuzz".
if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "VELTRA_FUZZ needs clang, and this is ${CMAKE_CXX_COMPILER_ID}. cmake --preset fuzz chooses it.")
endif()
set(VELTRA_FUZZ_SECONDS 10 CACHE STRING "How long each fuzzer runs as a test")

add_custom_target(fuzzers) # all of them

# veltra_add_fuzzer(NAME SOURCES ... LINK ... CORPUS FOLDER): a libFuzzer program whose sources define
# LLVMFuzzerTestOneInput, and a test that starts it from the seeds in the folder. What it finds is kept in the build folder
# and is where it goes on the next time.
function(veltra_add_fuzzer name)
    cmake_parse_arguments(arg "" "CORPUS" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    add_dependencies(fuzzers ${name})
    target_link_libraries(${name} PRIVATE ${arg_LINK})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    set(found ${CMAKE_BINARY_DIR}/fuzz/${name})
    file(MAKE_DIRECTORY ${found})
    add_test(NAME ${name} COMMAND ${name} -max_total_time=${VELTRA_FUZZ_SECONDS} -max_len=65536 -timeout=5
        -artifact_prefix=${found}- ${found} ${CMAKE_CURRENT_SOURCE_DIR}/${arg_CORPUS})
    set_tests_properties(${name} PROPERTIES LABELS fuzz)
endfunction()
