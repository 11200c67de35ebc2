# Random orders and refunds, and what must hold for each export of them.
add_library(property_support STATIC
    property_csv.cpp property_csv.h
    property_shop.cpp property_shop.h
    property_values.cpp property_values.h)
target_link_libraries(property_support PUBLIC shop_server Qt6::Core PRIVATE ledora_flags)
ledora_reuse_headers(property_support test_headers)

ledora_add_test(tst_proof_properties SOURCES tst_proof_properties.cpp
                LIBS property_support app_test_support TIMEOUT 600)
ledora_add_test(tst_proof_properties_surroundings
                SOURCES tst_proof_properties_surroundings.cpp property_run.cpp property_run.h
                LIBS property_support app_test_support TIMEOUT 1800
                ENV QTEST_FUNCTION_TIMEOUT=3600000)
