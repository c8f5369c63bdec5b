# The administrator's console: statements of the dialect on standard input.
add_executable(jetsql jetsql.cpp)
target_link_libraries(jetsql PRIVATE mirsa_jet)
target_precompile_headers(jetsql REUSE_FROM mirsa_pch_core)
install(TARGETS jetsql DESTINATION .)
