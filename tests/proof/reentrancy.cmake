add_library(reentrancy_road STATIC
    reentrancy_dice.h
    reentrancy_export.cpp reentrancy_export.h
    reentrancy_journal.cpp reentrancy_journal.h
    reentrancy_road.cpp reentrancy_road.h
    reentrancy_user.cpp reentrancy_user.h)
target_link_libraries(reentrancy_road PUBLIC app_test_support PRIVATE ledora_flags)
ledora_reuse_headers(reentrancy_road test_headers)

# With a secret service that answers, and without one, where each secret brings a box up.
ledora_add_test(tst_proof_reentrancy SOURCES tst_proof_reentrancy.cpp proof_size.h
                LIBS reentrancy_road KEYRING TIMEOUT 1800)
target_compile_definitions(tst_proof_reentrancy PRIVATE LEDORA_SECRET_STORE)
ledora_add_test(tst_proof_reentrancy_no_store SOURCES tst_proof_reentrancy.cpp proof_size.h
                LIBS reentrancy_road TIMEOUT 1800)
ledora_add_test(tst_proof_open_once SOURCES tst_proof_open_once.cpp LIBS app_test_support)
