if(VANTREL_SCREENS)
  find_package(GTest REQUIRED)
  add_executable(bench_measuring_share BenchMeasuringShare.cpp
    ${CMAKE_SOURCE_DIR}/tests/tour/DialogAnswers.cpp
    ${CMAKE_SOURCE_DIR}/tests/tour/Stage.cpp)
  set_target_properties(bench_measuring_share PROPERTIES AUTOMOC ON)
  target_include_directories(bench_measuring_share PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(bench_measuring_share PRIVATE vantrel_start vantrel_instrument_support
    GTest::gtest Qt6::Test vantrel_warnings)
  target_compile_definitions(bench_measuring_share PRIVATE
    VANTREL_DEMO_SETTINGS="${CMAKE_SOURCE_DIR}/packaging/demo/Vantrel.ini")

  find_package(X11 QUIET)
  if(X11_FOUND)
    add_executable(bench_start BenchStart.cpp)
    target_link_libraries(bench_start PRIVATE X11::X11 vantrel_warnings)
  endif()
endif()
