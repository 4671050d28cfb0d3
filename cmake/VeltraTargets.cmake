# One interface target carries the warnings, and one function makes the library of a folder.
add_library(veltra_warnings INTERFACE)
target_compile_options(veltra_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Wold-style-cast -Wformat=2 -Wundef
    $<$<BOOL:${VELTRA_WERROR}>:-Werror>)

if(VELTRA_SANITIZE)
    add_compile_options(-fsanitize=${VELTRA_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${VELTRA_SANITIZE})
endif()

if(VELTRA_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# veltra_folder_library(NAME SOURCES ... [LINK ...] [QT]): static library veltra_<folder>, include root src/.
function(veltra_folder_library name)
    cmake_parse_arguments(arg "QT" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${arg_LINK} PRIVATE veltra_warnings)
    if(arg_QT)
        set_target_properties(${name} PROPERTIES AUTOMOC ON)
        target_compile_definitions(${name} PRIVATE QT_NO_CAST_FROM_ASCII QT_NO_FOREACH QT_USE_QSTRINGBUILDER)
    endif()
endfunction()
