vantrel_core_bench(bench_chem BenchChem.cpp)
