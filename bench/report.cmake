add_executable(bench_report BenchReport.cpp)
target_link_libraries(bench_report PRIVATE mirsa_report benchmark::benchmark)
