add_executable(vantrel-generate ${CMAKE_CURRENT_SOURCE_DIR}/GenerateMeasurement.cpp)
target_link_libraries(vantrel-generate PRIVATE vantrel_core vantrel_warnings)

vantrel_core_bench(bench_report ${CMAKE_CURRENT_SOURCE_DIR}/BenchReport.cpp
  ${CMAKE_SOURCE_DIR}/tests/report/support/MeasurementText.cpp)

if(VANTREL_SCREENS)
  # One opening of a file in the real viewer; viewer-figures.sh sets it beside wc.
  add_executable(bench_viewer ${CMAKE_CURRENT_SOURCE_DIR}/BenchViewer.cpp)
  target_link_libraries(bench_viewer PRIVATE vantrel_screens vantrel_platform_qt
    vantrel_test_support vantrel_warnings)
endif()
