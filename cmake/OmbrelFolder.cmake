# ombrel_warnings(target): the warnings that all of our code is compiled with.
function(ombrel_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wconversion -Wshadow
        $<$<CXX_COMPILER_ID:Clang>:-Wreserved-identifier> $<$<BOOL:${OMBREL_WERROR}>:-Werror>)
endfunction()

# ombrel_precompiled(target): what most of our sources include is read once, when OMBREL_PRECOMPILED is on. That a source
# includes what it uses is seen by every build without.
function(ombrel_precompiled target)
    if(NOT OMBREL_PRECOMPILED)
        return()
    endif()
    if(NOT TARGET ombrel_headers)
        set(source ${PROJECT_BINARY_DIR}/Headers.cpp)
        file(CONFIGURE OUTPUT ${source} CONTENT "")
        add_library(ombrel_headers OBJECT ${source})
        ombrel_warnings(ombrel_headers)
        target_precompile_headers(ombrel_headers PRIVATE <algorithm> <array> <cmath> <cstdint> <functional> <limits>
            <map> <memory> <optional> <span> <string> <string_view> <utility> <variant> <vector>)
    endif()
    target_precompile_headers(${target} REUSE_FROM ombrel_headers)
endfunction()

# ombrel_folder(name USES folders... LIBRARIES private... SOURCES files...): one folder of the library, as a static
# library of its own, so that its tests link what lies below it and nothing above.
function(ombrel_folder name)
    cmake_parse_arguments(FOLDER "" "" "USES;LIBRARIES;SOURCES" ${ARGN})
    add_library(ombrel_${name} STATIC ${FOLDER_SOURCES})
    target_include_directories(ombrel_${name} PUBLIC ${PROJECT_SOURCE_DIR})
    foreach(used IN LISTS FOLDER_USES)
        target_link_libraries(ombrel_${name} PUBLIC ombrel_${used})
    endforeach()
    target_link_libraries(ombrel_${name} PRIVATE ${FOLDER_LIBRARIES})
    ombrel_warnings(ombrel_${name})
    ombrel_precompiled(ombrel_${name})
    set_property(GLOBAL APPEND PROPERTY OMBREL_FOLDERS ombrel_${name})
endfunction()

# Test code runs once: what counts is how long it takes to compile.
function(ombrel_test_compilation target)
    target_compile_options(${target} PRIVATE -O0)
    # Objects and programs would be compiled with different options otherwise, and could not share a precompiled header.
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
    ombrel_warnings(${target})
endfunction()

# ombrel_test(name LABEL label USES folders... SOURCES files...): a test program on those folders.
function(ombrel_test name)
    cmake_parse_arguments(TEST "" "LABEL" "USES;SOURCES" ${ARGN})
    add_executable(${name} ${TEST_SOURCES})
    foreach(used IN LISTS TEST_USES)
        target_link_libraries(${name} PRIVATE ombrel_${used})
    endforeach()
    target_link_libraries(${name} PRIVATE GTest::gmock GTest::gtest_main)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
    ombrel_test_compilation(${name})
    target_precompile_headers(${name} REUSE_FROM ombrel_test_headers)
    # The preferences of whoever runs the tests must not change what is drawn.
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60
        PROPERTIES LABELS "${TEST_LABEL}" TIMEOUT 300 ENVIRONMENT "XDG_CONFIG_HOME=${PROJECT_BINARY_DIR}/tests/config")
endfunction()

# ombrel_fuzz_target(name targets...): fuzz/<name>.cpp on those.
function(ombrel_fuzz_target name)
    add_executable(${name} ${name}.cpp)
    target_link_libraries(${name} PRIVATE ${ARGN})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    ombrel_warnings(${name})
    add_dependencies(ombrel_fuzz ${name})
endfunction()

# ombrel_benchmark(name targets...): benchmarks/<name>.cpp on those.
function(ombrel_benchmark name)
    add_executable(${name} ${name}.cpp)
    target_link_libraries(${name} PRIVATE ${ARGN} benchmark::benchmark_main)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
    ombrel_warnings(${name})
    add_dependencies(ombrel_benchmarks ${name})
endfunction()
