set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Presets compile much the same files: what one has compiled is there for the others. A precompiled header counts as the
# same when what it was made of is.
find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_DIR=${PROJECT_SOURCE_DIR}/build/ccache
        CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE})
endif()

# Where programs are linked again and again, mostly tests; what people run is linked as their system does it.
find_program(LLD ld.lld)
if(LLD)
    add_link_options($<$<CONFIG:Debug>:-fuse-ld=lld>)
endif()

option(BRIDGE_WERROR "Treat warnings as errors" OFF)
set(BRIDGE_SANITIZE "" CACHE STRING "Sanitizers, as for -fsanitize=")

# Ours alone: a library's headers are not ours to warn about.
add_library(bridge_warnings INTERFACE)
target_compile_options(bridge_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
    -Woverloaded-virtual -Wcast-align -Wformat=2 $<$<BOOL:${BRIDGE_WERROR}>:-Werror>)

if(BRIDGE_SANITIZE)
    # clang 14 can't assemble coroutines under -fsanitize=function.
    set(no_function $<$<CXX_COMPILER_ID:Clang>:-fno-sanitize=function>)
    add_compile_options(-fsanitize=${BRIDGE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer ${no_function})
    add_link_options(-fsanitize=${BRIDGE_SANITIZE} ${no_function})
else()
    add_compile_options($<$<CONFIG:Release,RelWithDebInfo>:-D_FORTIFY_SOURCE=2> -fstack-protector-strong)
endif()
