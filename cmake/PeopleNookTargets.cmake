# Compile settings shared by every target, and the helpers that declare targets with them.

add_library(peoplenook_settings INTERFACE)
target_compile_features(peoplenook_settings INTERFACE cxx_std_20)
target_compile_options(peoplenook_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast -Werror)
# QT_NO_KEYWORDS: GIO's headers use the words `signals` and `slots` as names.
target_compile_definitions(peoplenook_settings INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
    PEOPLENOOK_VERSION="${PROJECT_VERSION}")
target_include_directories(peoplenook_settings INTERFACE ${CMAKE_SOURCE_DIR}/src)

if(CMAKE_INTERPROCEDURAL_OPTIMIZATION)
    # What GCC 12 says of the size of QHash's arrays when it links; it is wrong, and nobody could mend it here.
    target_link_options(peoplenook_settings INTERFACE -Wno-alloc-size-larger-than)
endif()

set(PEOPLENOOK_SANITIZE "" CACHE STRING "Value of -fsanitize= for all targets; empty for none")
if(PEOPLENOOK_SANITIZE)
    target_compile_options(peoplenook_settings INTERFACE -fsanitize=${PEOPLENOOK_SANITIZE} -fno-omit-frame-pointer
        -fno-sanitize-recover=all)
    target_link_options(peoplenook_settings INTERFACE -fsanitize=${PEOPLENOOK_SANITIZE})
endif()
if(PEOPLENOOK_FUZZ)
    target_compile_options(peoplenook_settings INTERFACE -fsanitize=fuzzer-no-link)
endif()

# peoplenook_library(NAME SOURCES file... [PUBLIC lib...] [PRIVATE lib...]): one static library per folder of src/.
function(peoplenook_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC Qt6::Core ${ARG_PUBLIC} PRIVATE peoplenook_settings ${ARG_PRIVATE})
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    # Not for tests and tools: a lambda that returns a concatenation would return references to what is gone.
    target_compile_definitions(${name} PRIVATE QT_USE_QSTRINGBUILDER)
endfunction()

# peoplenook_program(NAME SOURCES file... LIBRARIES lib...)
function(peoplenook_program name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE peoplenook_settings Qt6::Core ${ARG_LIBRARIES})
endfunction()

# Clang's sanitizers need it to name functions, as the suppressions under tests/ do.
find_program(PEOPLENOOK_SYMBOLIZER llvm-symbolizer-14)

# peoplenook_test(NAME LIBRARIES lib...): tests/NAME.cpp is one Qt Test program, run by ctest from the source root,
# without the desktop of whoever runs it.
function(peoplenook_test name)
    cmake_parse_arguments(ARG "" "" "LIBRARIES" ${ARGN})
    peoplenook_program(${name} SOURCES ${name}.cpp LIBRARIES Qt6::Test testsupport ${ARG_LIBRARIES})
    add_test(NAME ${name} COMMAND ${name} WORKING_DIRECTORY ${CMAKE_SOURCE_DIR})
    set(environment
        "XDG_DATA_HOME=${CMAKE_BINARY_DIR}/testing/data" DBUS_SESSION_BUS_ADDRESS= QT_QPA_PLATFORM=offscreen
        LC_ALL=C.UTF-8 TZ=UTC "TSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/tsan.supp"
        "LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/lsan.supp")
    if(PEOPLENOOK_SYMBOLIZER)
        list(APPEND environment "ASAN_SYMBOLIZER_PATH=${PEOPLENOOK_SYMBOLIZER}")
    endif()
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "${environment}" TIMEOUT 600)
endfunction()
