if(VANTREL_SCREENS)
  add_executable(bench_print BenchPrint.cpp)
  target_link_libraries(bench_print PRIVATE vantrel_platform_qt vantrel_test_support
    benchmark::benchmark vantrel_warnings)
endif()
