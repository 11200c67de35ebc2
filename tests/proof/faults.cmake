ledora_add_test(tst_proof_faults
    SOURCES
        tst_proof_faults.cpp
        fault_server.cpp fault_server.h
        fault_shop.cpp fault_shop.h
        fault_table.cpp fault_table.h
        fault_trial.cpp fault_trial.h
        fault_wire.cpp fault_wire.h
    LIBS proof_screen
    DISPLAY KEYRING TIMEOUT 1800
    ENV QTEST_FUNCTION_TIMEOUT=1790000)
