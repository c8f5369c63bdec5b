set(JET_STATEMENT_TESTS
    StatementEngines.cpp
    TranslateTest.cpp
    TranslateCorpusTest.cpp
    TranslateRowsTest.cpp)
