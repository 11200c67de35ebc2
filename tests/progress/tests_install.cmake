# The package as a program of somebody else's finds it. As with any test, its target builds what it
# needs, which here is the library alone.
add_custom_target(tst_find_progress_package ALL)
add_dependencies(tst_find_progress_package mod_progress_qt)
add_dependencies(progress_tests tst_find_progress_package)

set(home ${CMAKE_CURRENT_BINARY_DIR}/tst_find_progress_package.home)
set(work ${home}/work)
file(MAKE_DIRECTORY ${home})
file(CHMOD ${home} PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)

# What holds for everything in this build, the sanitizers above all, has to hold for what links it.
get_directory_property(consumer_flags COMPILE_OPTIONS)
get_directory_property(consumer_link_flags LINK_OPTIONS)
list(PREPEND consumer_flags ${CMAKE_CXX_FLAGS})
list(PREPEND consumer_link_flags ${CMAKE_EXE_LINKER_FLAGS})
list(JOIN consumer_flags " " consumer_flags)
list(JOIN consumer_link_flags " " consumer_link_flags)
configure_file(consumer/find_package.cmake.in tst_find_progress_package.cmake @ONLY)

set(leaks 0)
if(LEDORA_DETECT_LEAKS)
    set(leaks 1)
endif()
set(timeout 300)
if(LEDORA_SANITIZE OR LEDORA_SANITIZE_THREAD)
    set(timeout 900)
endif()
add_test(NAME tst_find_progress_package
         COMMAND ${CMAKE_COMMAND} -D CONFIG=$<CONFIG>
                 -P ${CMAKE_CURRENT_BINARY_DIR}/tst_find_progress_package.cmake
         WORKING_DIRECTORY ${home})
set_tests_properties(tst_find_progress_package PROPERTIES
    TIMEOUT ${timeout}
    LABELS progress
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;TZ=UTC;LC_ALL=C.UTF-8;HOME=${home};XDG_CONFIG_HOME=${home}/config;XDG_DATA_HOME=${home}/data;XDG_CACHE_HOME=${home}/cache;XDG_RUNTIME_DIR=${home};DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent;NO_AT_BRIDGE=1;CCACHE_DISABLE=1;ASAN_OPTIONS=detect_leaks=${leaks}:detect_stack_use_after_return=0;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/lsan.supp:print_suppressions=0;TSAN_OPTIONS=ignore_noninstrumented_modules=1:die_after_fork=0:suppressions=${PROJECT_SOURCE_DIR}/tests/support/tsan.supp:print_suppressions=0")
