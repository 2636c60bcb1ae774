vantrel_core_bench(bench_live_cycle BenchLiveCycle.cpp)
if(VANTREL_SCREENS)
  # 100,000 ticks of the measuring page; fails when memory grows with them.
  add_executable(bench_measuring_memory BenchMeasuringMemory.cpp)
  target_link_libraries(bench_measuring_memory PRIVATE vantrel_screens vantrel_platform_qt
    vantrel_test_support vantrel_warnings)
endif()
