add_library(proof_stand STATIC
    kill_moment.cpp kill_moment.h
    kill_reference.cpp kill_reference.h
    kill_stand.cpp kill_stand.h)
target_compile_definitions(proof_stand PRIVATE
    LEDORA_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
target_link_libraries(proof_stand PUBLIC proof_screen PRIVATE ledora_flags)
ledora_reuse_headers(proof_stand test_headers)

# The real program before servers that prove who they are, and others.
ledora_add_test(tst_proof_tls
    SOURCES
        tst_proof_tls.cpp
        tls_authority.cpp tls_authority.h
        tls_front.cpp tls_front.h
    LIBS proof_stand
    DISPLAY KEYRING TIMEOUT 600
    ENV QTEST_FUNCTION_TIMEOUT=590000 QT_LOGGING_RULES=default.debug=false)

# The real program, ended without warning.
ledora_add_test(tst_proof_kill
    SOURCES
        tst_proof_kill.cpp
    LIBS proof_stand
    DISPLAY KEYRING TIMEOUT 3600
    ENV QTEST_FUNCTION_TIMEOUT=3590000 QT_LOGGING_RULES=default.debug=false)

# Disks of its own, which it alone sees.
ledora_add_test(tst_proof_disk SOURCES tst_proof_disk.cpp disk_mount.cpp disk_mount.h
                LIBS app_test_support)
