ledora_add_test(tst_hostile_answers
                SOURCES tst_hostile_answers.cpp ../app/export_table.cpp ../app/export_table.h
                LIBS app_test_support)
