include_guard()

# Where a test looks for its data differs by folder; with it no two folders could share their precompiled
# headers, and no test here looks that way.
get_target_property(definitions Qt6::Test INTERFACE_COMPILE_DEFINITIONS)
list(FILTER definitions EXCLUDE REGEX QT_TESTCASE_)
set_target_properties(Qt6::Test PROPERTIES INTERFACE_COMPILE_DEFINITIONS "${definitions}")

option(LEDORA_DETECT_LEAKS "Let the address sanitizer look for leaks" ON)

# ledora_reuse_headers(<target> <headers>): compiles a target of tests with the headers of another.
function(ledora_reuse_headers target headers)
    # What the headers are of, whatever the target itself needs.
    get_target_property(libraries ${headers} INTERFACE_LINK_LIBRARIES)
    list(FILTER libraries INCLUDE REGEX ^Qt6::)
    target_link_libraries(${target} PRIVATE ${libraries})
    target_precompile_headers(${target} REUSE_FROM ${headers})
    # A test includes its own moc file, so this one is mostly empty; with the headers it would take as
    # long to compile as the test.
    set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/${target}_autogen/mocs_compilation.cpp
                                PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
endfunction()

# ledora_add_test(<name> SOURCES <file>... [LIBS <target>...] [TIMEOUT <seconds>] [ENV <NAME=value>...]
#                 [HEADERS <target>] [DISPLAY] [KEYRING])
#
# One Qt Test program, registered with CTest under its name. It runs offscreen, in a folder of its
# own that is also its home, in a time zone other than Berlin's, and without the user's session bus,
# so that tests neither see each other nor anything of the user's.
#
# HEADERS  whose precompiled headers it takes; test_headers if not given
# KEYRING  runs it inside a private D-Bus session with a secret service of its own
# DISPLAY  runs it on a virtual X server of its own
function(ledora_add_test name)
    cmake_parse_arguments(arg "DISPLAY;KEYRING" "HEADERS;TIMEOUT" "SOURCES;LIBS;ENV" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LIBS} Qt6::Test ledora_flags)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
    target_compile_definitions(${name} PRIVATE
        LEDORA_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data"
        LEDORA_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")

    if(NOT arg_HEADERS)
        set(arg_HEADERS test_headers)
    endif()
    ledora_reuse_headers(${name} ${arg_HEADERS})

    set(home ${CMAKE_CURRENT_BINARY_DIR}/${name}.home)
    file(MAKE_DIRECTORY ${home})
    # Also the runtime folder, which nobody else may look into.
    file(CHMOD ${home} PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)

    set(command $<TARGET_FILE:${name}>)
    set(platform QT_QPA_PLATFORM=offscreen)
    if(arg_KEYRING)
        list(PREPEND command ${PROJECT_SOURCE_DIR}/scripts/with-keyring)
    endif()
    if(arg_DISPLAY)
        list(PREPEND command ${PROJECT_SOURCE_DIR}/scripts/with-display)
        set(platform QT_QPA_PLATFORM=xcb)
    endif()

    set(leaks 0)
    if(LEDORA_DETECT_LEAKS)
        set(leaks 1)
    endif()
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    if(LEDORA_SANITIZE OR LEDORA_SANITIZE_THREAD)
        math(EXPR arg_TIMEOUT "${arg_TIMEOUT} * 3")
    endif()

    # A value that claims to be larger than the memory has to be refused by the code, not by the
    # sanitizer's allocator.
    add_test(NAME ${name} COMMAND ${command} WORKING_DIRECTORY ${home})
    set_tests_properties(${name} PROPERTIES
        TIMEOUT ${arg_TIMEOUT}
        SKIP_RETURN_CODE 77
        ENVIRONMENT "${platform};TZ=UTC;LC_ALL=C.UTF-8;HOME=${home};XDG_CONFIG_HOME=${home}/config;XDG_DATA_HOME=${home}/data;XDG_CACHE_HOME=${home}/cache;XDG_RUNTIME_DIR=${home};DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent;NO_AT_BRIDGE=1;ASAN_OPTIONS=detect_leaks=${leaks}:detect_stack_use_after_return=1:allocator_may_return_null=1;UBSAN_OPTIONS=print_stacktrace=1;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/lsan.supp:print_suppressions=0;TSAN_OPTIONS=ignore_noninstrumented_modules=1:die_after_fork=0:suppressions=${PROJECT_SOURCE_DIR}/tests/support/tsan.supp:print_suppressions=0;${arg_ENV}")
endfunction()
