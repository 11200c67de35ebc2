# The real program in runs of every kind, after which its secrets are looked for.
ledora_add_test(tst_proof_secrets
                SOURCES tst_proof_secrets.cpp secret_places.cpp secret_places.h
                LIBS e2e_support DISPLAY KEYRING TIMEOUT 1800
                ENV QTEST_FUNCTION_TIMEOUT=3600000)
target_compile_definitions(tst_proof_secrets PRIVATE LEDORA_SCRIPTS_DIR="${PROJECT_SOURCE_DIR}/scripts")
