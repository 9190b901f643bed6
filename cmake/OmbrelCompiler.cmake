# How everything is compiled; presets add what they need (sanitizers, coverage) on top.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# What programs may use is marked OMBREL_EXPORT.
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")

# Products of floating point must not depend on whether the machine has fused operations.
add_compile_options(-ffp-contract=off -fno-plt)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Calls inside the shared library may be inlined although its symbols are visible; clang does so by itself.
    add_compile_options(-fno-semantic-interposition)
endif()

if(OMBREL_CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
    find_program(OMBREL_CCACHE_PROGRAM ccache)
    mark_as_advanced(OMBREL_CCACHE_PROGRAM)
    if(OMBREL_CCACHE_PROGRAM)
        set(CMAKE_CXX_COMPILER_LAUNCHER "${OMBREL_CCACHE_PROGRAM}")
    endif()
endif()
