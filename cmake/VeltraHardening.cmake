# What compiler and linker offer against the abuse of mistakes, and what makes two builds of one source the same file.
# A sanitizer checks more than all of this, and needs the code as it is.
if(VELTRA_SANITIZE OR VELTRA_FUZZ)
    return()
endif()

set(CMAKE_POSITION_INDEPENDENT_CODE ON)
add_compile_options(-fstack-protector-strong)
# Needs the optimiser; undefined first, since some compilers come with a level of their own.
set(veltra_optimised $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
add_compile_options($<${veltra_optimised}:-U_FORTIFY_SOURCE> $<${veltra_optimised}:-D_FORTIFY_SOURCE=2>)

if(WIN32)
    # Random addresses from the whole 64-bit range, no executable data, and no time of linking in the file. There is no
    # control-flow guard in this linker. The checks' own library is linked into the program: one DLL less to ship.
    add_link_options(LINKER:--dynamicbase,--high-entropy-va,--nxcompat,--no-insert-timestamp)
    find_library(VELTRA_STACK_PROTECTOR_LIBRARY NAMES libssp.a REQUIRED NO_CMAKE_FIND_ROOT_PATH
                 PATHS ${CMAKE_CXX_IMPLICIT_LINK_DIRECTORIES})
    string(APPEND CMAKE_CXX_STANDARD_LIBRARIES " ${VELTRA_STACK_PROTECTOR_LIBRARY}") # after all that need it
else()
    include(CheckPIESupported)
    check_pie_supported(LANGUAGES CXX)
    include(CheckCXXCompilerFlag)
    check_cxx_compiler_flag(-fcf-protection VELTRA_HAS_CF_PROTECTION) # on some processors only
    if(VELTRA_HAS_CF_PROTECTION)
        add_compile_options(-fcf-protection)
    endif()
    add_link_options(LINKER:-z,relro,-z,now)
endif()
