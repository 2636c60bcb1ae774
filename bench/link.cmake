vantrel_core_bench(bench_link BenchLink.cpp)
