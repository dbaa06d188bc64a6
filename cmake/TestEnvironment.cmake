# Every test runs without a display, in a home of its own and under the plain locale; a test that wants
# anything else sets it itself.
set(FADERHALL_TEST_ENVIRONMENT
    "QT_QPA_PLATFORM=offscreen"
    "HOME=${PROJECT_BINARY_DIR}/home"
    "XDG_CONFIG_HOME=${PROJECT_BINARY_DIR}/home/.config"
    "LC_ALL=C.UTF-8"
    "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/leaks.supp"
    "TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/threads.supp"
    "UBSAN_OPTIONS=print_stacktrace=1")
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/home)

