# The statement side: from the dialect's text to an engine's.
set(JET_STATEMENT_SOURCES
    Criteria.cpp
    Definition.cpp
    Emit.cpp
    EmitExpression.cpp
    EmitLetters.cpp
    EmitSelect.cpp
    EmitWrite.cpp
    Functions.cpp
    Lexer.cpp
    Normalize.cpp
    Parser.cpp
    Types.cpp)
