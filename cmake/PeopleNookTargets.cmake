# Compile settings shared by every target, and the helpers that declare targets with them.

add_library(peoplenook_settings INTERFACE)
target_compile_features(peoplenook_settings INTERFACE cxx_std_20)
target_compile_options(peoplenook_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast -Werror)
# Warnings are errors where developers and CI build. Where GCC 12 optimises, it also warns falsely, of std::optional and of
# sums of std::string (GCC bugs 80635 and 105651), which must not stop a build for use.
target_compile_options(peoplenook_settings INTERFACE $<$<NOT:$<CONFIG:Debug>>:-Wno-error>)
# QT_NO_KEYWORDS: GIO's headers use the words `signals` and `slots` as names.
target_compile_definitions(peoplenook_settings INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
    PEOPLENOOK_VERSION="${PROJECT_VERSION}")
target_include_directories(peoplenook_settings INTERFACE ${CMAKE_SOURCE_DIR}/src)

if(CMAKE_INTERPROCEDURAL_OPTIMIZATION)
    # False warnings of GCC 12 about the size of QHash's arrays when linking.
    target_link_options(peoplenook_settings INTERFACE -Wno-alloc-size-larger-than)
endif()

set(PEOPLENOOK_SANITIZE "" CACHE STRING "Value of -fsanitize= for all targets; empty for none")
if(PEOPLENOOK_SANITIZE)
    target_compile_options(peoplenook_settings INTERFACE -fsanitize=${PEOPLENOOK_SANITIZE} -fno-omit-frame-pointer
        -fno-sanitize-recover=all)
    target_link_options(peoplenook_settings INTERFACE -fsanitize=${PEOPLENOOK_SANITIZE})
endif()

# For programs: an address book is millions of small texts, which this allocator makes in two thirds of the time.
# Sanitizers bring their own.
add_library(allocator INTERFACE)
if(NOT PEOPLENOOK_SANITIZE)
    target_link_libraries(allocator INTERFACE PkgConfig::jemalloc)
endif()
if(PEOPLENOOK_FUZZ)
    target_compile_options(peoplenook_settings INTERFACE -fsanitize=fuzzer-no-link)
endif()

# Compilers mostly read headers of Qt and the standard library. Precompiled, these are read once per kind of target
# instead of once per file; definitions of libraries and tests change Qt's headers.
option(PEOPLENOOK_PRECOMPILE "Read common headers once" OFF)
if(PEOPLENOOK_PRECOMPILE)
    # Some libraries add it, and it must be the same for all.
    target_compile_options(peoplenook_settings INTERFACE -pthread)
    # Or ccache would find every precompiled header to be another one.
    if(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
        target_compile_options(peoplenook_settings INTERFACE "SHELL:-Xclang -fno-pch-timestamp")
    endif()
endif()
set(common_headers
    <QByteArray> <QCoreApplication> <QDateTime> <QDir> <QFile> <QHash> <QList> <QLoggingCategory> <QObject> <QSet>
    <QString> <QStringList> <algorithm> <array> <chrono> <deque> <functional> <map> <memory> <mutex> <optional> <span>
    <string> <string_view> <thread> <unordered_map> <unordered_set> <utility> <variant> <vector>)

# peoplenook_headers(KIND DEFINITIONS name... LIBRARIES lib... HEADERS header...): precompiled headers of that kind.
function(peoplenook_headers kind)
    cmake_parse_arguments(ARG "" "" "DEFINITIONS;LIBRARIES;HEADERS" ${ARGN})
    if(PEOPLENOOK_PRECOMPILE)
        file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/empty.cpp "")
        add_library(headers_of_${kind} OBJECT ${CMAKE_CURRENT_BINARY_DIR}/empty.cpp)
        set_target_properties(headers_of_${kind} PROPERTIES AUTOMOC OFF)
        target_link_libraries(headers_of_${kind} PRIVATE peoplenook_settings Qt6::Core ${ARG_LIBRARIES})
        target_compile_definitions(headers_of_${kind} PRIVATE ${ARG_DEFINITIONS})
        target_precompile_headers(headers_of_${kind} PRIVATE ${common_headers} ${ARG_HEADERS})
    endif()
endfunction()
function(peoplenook_precompile target kind)
    if(PEOPLENOOK_PRECOMPILE)
        target_precompile_headers(${target} REUSE_FROM headers_of_${kind})
    endif()
endfunction()
# Not for tests and tools: a lambda that returns a concatenation would return dangling references.
set(library_definitions QT_USE_QSTRINGBUILDER)
peoplenook_headers(library DEFINITIONS ${library_definitions})
peoplenook_headers(program)
peoplenook_headers(window DEFINITIONS ${library_definitions} LIBRARIES Qt6::DBus Qt6::Widgets
    HEADERS <QBoxLayout> <QLabel> <QMenu> <QPainter> <QPushButton> <QTableView> <QTimer> <QWidget>)

# peoplenook_library(NAME [EXCEPT file...] [PUBLIC lib...] [PRIVATE lib...]): one static library per folder of src/, of
# all its sources.
function(peoplenook_library name)
    cmake_parse_arguments(ARG "" "" "EXCEPT;PUBLIC;PRIVATE" ${ARGN})
    file(GLOB sources RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} CONFIGURE_DEPENDS *.cpp)
    list(REMOVE_ITEM sources ${ARG_EXCEPT})
    add_library(${name} STATIC ${sources})
    target_link_libraries(${name} PUBLIC Qt6::Core ${ARG_PUBLIC} PRIVATE peoplenook_settings ${ARG_PRIVATE})
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    target_compile_definitions(${name} PRIVATE ${library_definitions})
    if(name MATCHES "^app_")
        peoplenook_precompile(${name} window)
    else()
        peoplenook_precompile(${name} library)
    endif()
endfunction()

# peoplenook_program(NAME SOURCES file... LIBRARIES lib... [HEADERS kind])
function(peoplenook_program name)
    cmake_parse_arguments(ARG "" "HEADERS" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE peoplenook_settings Qt6::Core ${ARG_LIBRARIES})
    if(NOT ARG_HEADERS)
        set(ARG_HEADERS program)
    endif()
    peoplenook_precompile(${name} ${ARG_HEADERS})
endfunction()

# Sanitizer options of tests. Qt starts programs by a vfork() that the thread sanitizer takes for a fork of this process.
set(sanitizer_environment
    "TSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/tsan.supp:ignore_noninstrumented_modules=1:die_after_fork=0"
    "LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/lsan.supp")
# Clang's need it for function names, which the suppressions use.
find_program(PEOPLENOOK_SYMBOLIZER llvm-symbolizer-14)
if(PEOPLENOOK_SYMBOLIZER)
    list(APPEND sanitizer_environment "ASAN_SYMBOLIZER_PATH=${PEOPLENOOK_SYMBOLIZER}")
endif()

# Saves wait for the disk, which tests need not do.
execute_process(COMMAND df --output=avail -BM /dev/shm OUTPUT_VARIABLE memory_disk ERROR_QUIET)
set(quick_folder)
if(memory_disk MATCHES "[0-9][0-9][0-9][0-9]M")
    set(quick_folder TMPDIR=/dev/shm)
endif()

# peoplenook_test(PATH [LABEL label] LIBRARIES lib...): tests/PATH.cpp is one Qt Test program, named after the file, run
# by ctest from the source root, isolated from the user's desktop. Labels: fast (default), window, fault, desktop.
function(peoplenook_test path)
    cmake_parse_arguments(ARG "" "LABEL" "LIBRARIES" ${ARGN})
    get_filename_component(name ${path} NAME)
    set(headers test)
    if(ARG_LIBRARIES MATCHES "app|Qt6::Network")
        set(headers program) # windows and sockets change Qt Test's headers
    endif()
    peoplenook_program(${name} SOURCES ${path}.cpp LIBRARIES Qt6::Test testsupport ${ARG_LIBRARIES} HEADERS ${headers})
    add_test(NAME ${name} COMMAND ${name} WORKING_DIRECTORY ${CMAKE_SOURCE_DIR})
    set(environment ${quick_folder}
        "XDG_DATA_HOME=${CMAKE_BINARY_DIR}/testing/data" DBUS_SESSION_BUS_ADDRESS= QT_QPA_PLATFORM=offscreen
        LC_ALL=C.UTF-8 TZ=UTC ${sanitizer_environment})
    if(NOT ARG_LABEL)
        set(ARG_LABEL fast)
    endif()
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "${environment}" TIMEOUT 600 LABELS ${ARG_LABEL})
endfunction()
