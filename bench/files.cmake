vantrel_core_bench(bench_files BenchFiles.cpp)
