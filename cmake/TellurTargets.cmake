# How targets are made here: one object library a folder, compiled once and linked into the shared
# libraries, programs and tests that need it.

option(TELLUR_TESTS "Build the tests" ON)
option(TELLUR_BENCHMARKS "Build the benchmarks" OFF)
option(TELLUR_WINDOWS "Build the plug-in with the window system that it opens" ON)
option(TELLUR_WERROR "Warnings are errors" OFF)
option(TELLUR_SANITIZE "Address and undefined-behaviour sanitizers" OFF)
option(TELLUR_COVERAGE "Coverage counters" OFF)
option(TELLUR_FUZZERS "Build the fuzzers, with clang" OFF)
option(TELLUR_TOGETHER "Compile some sources of a folder as one" OFF)

# Two presets may share a folder; cmake/build asks here which one it was configured with last.
file(WRITE ${CMAKE_BINARY_DIR}/preset.txt "${TELLUR_PRESET}\n")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
set(CMAKE_BUILD_RPATH "$ORIGIN")

# No fused multiply-add: heights are the same on every processor. No unique symbols: they would pin
# the plug-in's library in memory after it is closed.
add_compile_options(-Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
                    -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # g++ 12 reports overlaps in std::string code that are none.
    add_compile_options(-fno-gnu-unique -Wno-restrict)
    add_link_options(-Wl,-z,defs)
endif()
add_link_options(-Wl,--as-needed)

if(TELLUR_WERROR)
    add_compile_options(-Werror)
endif()
if(TELLUR_SANITIZE)
    # vptr compares type records by address, which differ across libraries with hidden symbols.
    add_compile_options(-fsanitize=address,undefined -fno-sanitize=vptr
                        -fno-sanitize-recover=all -fno-omit-frame-pointer -O1)
    add_link_options(-fsanitize=address,undefined)
endif()
if(TELLUR_COVERAGE)
    add_compile_options(--coverage)
    add_link_options(--coverage)
endif()
if(TELLUR_FUZZERS)
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize=vptr
                        -fno-sanitize-recover=all -O1)
    add_link_options(-fsanitize=address,undefined)
endif()

find_program(TELLUR_CCACHE ccache)
if(TELLUR_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${TELLUR_CCACHE})
endif()
find_program(TELLUR_MOLD mold)
if(TELLUR_MOLD)
    add_link_options(-fuse-ld=mold)
endif()

# tellur_together(NAME SOURCE…): where a preset asks for it, compiles up to about eight sources of a target as one,
# because most of the time goes into headers that they share. Which ones go by the names, so that a new source moves no
# other one into another group. cmake/apart.txt names the sources that stay alone.
file(STRINGS ${CMAKE_SOURCE_DIR}/cmake/apart.txt TELLUR_ALONE REGEX "^[^#]")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/cmake/apart.txt)
function(tellur_together strName)
    if(NOT TELLUR_TOGETHER)
        return()
    endif()
    list(LENGTH ARGN nSources)
    set(nGroups 1)
    while(nSources GREATER 8) # doubled as the folder grows, since another number moves all sources
        math(EXPR nGroups "${nGroups} * 2")
        math(EXPR nSources "(${nSources} + 1) / 2")
    endwhile()
    set_target_properties(${strName} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
    foreach(strSource IN LISTS ARGN)
        file(RELATIVE_PATH strPath ${CMAKE_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR}/${strSource})
        if(NOT strPath IN_LIST TELLUR_ALONE)
            string(MD5 strHash ${strPath})
            string(SUBSTRING ${strHash} 0 6 strHash)
            math(EXPR iGroup "0x${strHash} % ${nGroups}")
            set_source_files_properties(${strSource} PROPERTIES UNITY_GROUP group${iGroup})
        endif()
    endforeach()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # A fixture without linkage in a source that another file includes is no header's.
        target_compile_options(${strName} PRIVATE -Wno-subobject-linkage)
        if(TELLUR_SANITIZE) # g++ 12 sees lengths below 0 in its own containers
            target_compile_options(${strName} PRIVATE -Wno-stringop-overflow -Wno-array-bounds)
        endif()
    endif()
endfunction()

# tellur_folder(NAME SOURCES a.cpp … USES target …): the object library of one folder, of all its sources where
# none are named: in folders that grow by one row and one source. USES names the folders whose headers it includes.
# Where a preset compiles a folder as one source, TELLUR_APART names the sources that stay apart, by their paths.
set(TELLUR_APART "" CACHE STRING "Sources that stay apart where a folder is compiled as one source")
function(tellur_folder strName)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES;LIBRARIES" ${ARGN})
    if(NOT ARG_SOURCES)
        file(GLOB ARG_SOURCES RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} CONFIGURE_DEPENDS *.cpp)
    endif()
    add_library(${strName} OBJECT ${ARG_SOURCES})
    tellur_together(${strName} ${ARG_SOURCES})
    target_link_libraries(${strName} PUBLIC tellur_host ${ARG_LIBRARIES})
    foreach(strSource IN LISTS ARG_SOURCES)
        file(RELATIVE_PATH strPath ${CMAKE_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR}/${strSource})
        if(strPath IN_LIST TELLUR_APART)
            set_source_files_properties(${strSource} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
        endif()
    endforeach()
    foreach(strUsed IN LISTS ARG_USES)
        target_include_directories(
            ${strName} PUBLIC $<TARGET_PROPERTY:${strUsed},INTERFACE_INCLUDE_DIRECTORIES>)
    endforeach()
endfunction()

# g++ 12 warns inside its own <regex> when the sanitizers are on.
function(tellur_quiet_regex strName)
    if(TELLUR_SANITIZE)
        target_compile_options(${strName} PRIVATE -Wno-maybe-uninitialized)
    endif()
endfunction()

# The label of this folder's tests: what they need, then the folder, such as quick/tellur/brushes. The test
# script picks by it.
function(tellur_test_label strNeed strResult)
    file(RELATIVE_PATH strFolder ${CMAKE_SOURCE_DIR}/tests ${CMAKE_CURRENT_SOURCE_DIR})
    set(${strResult} ${strNeed}/${strFolder} PARENT_SCOPE)
endfunction()

# tellur_test(NAME SOURCES a_test.cpp … LIBRARIES target …): one test program; its cases become tests
# of their own. LIBRARIES may name object libraries and shared libraries, ENVIRONMENT variables of its run.
# Programs that open no window are what quick_tests builds.
add_custom_target(quick_tests)
function(tellur_test strName)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES;DEFINITIONS;ENVIRONMENT" ${ARGN})
    add_executable(${strName} ${ARG_SOURCES})
    tellur_together(${strName} ${ARG_SOURCES})
    target_link_libraries(${strName} PRIVATE ${ARG_LIBRARIES} GTest::gtest_main)
    target_compile_definitions(${strName} PRIVATE ${ARG_DEFINITIONS})
    target_include_directories(${strName} PRIVATE ${CMAKE_BINARY_DIR}/tests/generated)
    tellur_quiet_regex(${strName})
    set(strNeed windows)
    if(NOT ARG_LIBRARIES MATCHES "test_(windows|display)_main")
        set(strNeed quick)
        add_dependencies(quick_tests ${strName})
    endif()
    tellur_test_label(${strNeed} strLabel)
    gtest_discover_tests(
        ${strName} NO_PRETTY_VALUES # they may be addresses
        DISCOVERY_MODE PRE_TEST
        PROPERTIES TIMEOUT 300 LABELS ${strLabel} ENVIRONMENT "${ARG_ENVIRONMENT}")
endfunction()

# tellur_test_again(NAME program ENVIRONMENT variable… ARGUMENTS …): a test program once more, as a whole, in
# another environment.
function(tellur_test_again strName strProgram)
    cmake_parse_arguments(ARG "" "" "ENVIRONMENT;ARGUMENTS" ${ARGN})
    add_test(NAME ${strName} COMMAND ${strProgram} ${ARG_ARGUMENTS})
    tellur_test_label(again strLabel)
    set_tests_properties(${strName} PROPERTIES TIMEOUT 300 LABELS ${strLabel} ENVIRONMENT
                                               "${ARG_ENVIRONMENT}")
endfunction()

# tellur_fuzzer(NAME SOURCES a.cpp LIBRARIES target …): a program that feeds a reader with hostile bytes.
add_custom_target(fuzzers)
function(tellur_fuzzer strName)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(${strName} EXCLUDE_FROM_ALL ${ARG_SOURCES})
    target_link_libraries(${strName} PRIVATE ${ARG_LIBRARIES})
    target_link_options(${strName} PRIVATE -fsanitize=fuzzer)
    add_dependencies(fuzzers ${strName})
endfunction()
