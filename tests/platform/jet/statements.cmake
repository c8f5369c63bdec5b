set(JET_STATEMENT_TESTS
    StatementEngines.cpp
    TestTranslate.cpp
    TestTranslateCorpus.cpp
    TestTranslateRows.cpp)
