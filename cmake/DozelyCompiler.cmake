# What every target is compiled with.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_compile_options(-Wall -Wextra -Wpedantic -Werror)
add_compile_definitions(QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_CAST_FROM_BYTEARRAY QT_DISABLE_DEPRECATED_BEFORE=0x060400)

if(DOZELY_BUILD_TESTS OR DOZELY_BUILD_FUZZERS)
    # Lets tests and fuzzers reach classes that the library keeps to itself.
    add_compile_definitions(DOZELY_BUILD_TESTS)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    # What ccache has to be told to believe precompiled headers.
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CMAKE_COMMAND}" -E env
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime "${CCACHE_PROGRAM}")
    add_compile_options("$<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>")
endif()

# What is installed names the libraries that it uses, and no others: each costs at every start, and packages depend on all
# that are named. For the folders of what is installed.
set(DOZELY_LINK_USED "LINKER:--as-needed")
