vantrel_core_bench(bench_mcommon ${CMAKE_CURRENT_SOURCE_DIR}/BenchMcommon.cpp)
