# What every target is compiled with, and the sanitizers of the `asan` preset.
set(TOLLWICK_SANITIZE "" CACHE STRING "Sanitizers to build with, as for -fsanitize=")

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

add_library(tollwick_options INTERFACE)
target_compile_options(tollwick_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion)
if(TOLLWICK_SANITIZE)
    target_compile_options(tollwick_options INTERFACE
        -fsanitize=${TOLLWICK_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(tollwick_options INTERFACE -fsanitize=${TOLLWICK_SANITIZE})
endif()
if(MINGW)
    # GCC 12 sees overlaps in std::string where there are none.
    target_compile_options(tollwick_options INTERFACE -Wno-restrict)
    # One file that runs without the compiler's own libraries beside it.
    target_link_options(tollwick_options INTERFACE -static)
endif()
