vantrel_core_bench(bench_settings ${CMAKE_CURRENT_SOURCE_DIR}/BenchSettings.cpp)
