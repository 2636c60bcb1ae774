# The drawing engine as a static library; SOURCES is the folder of the fetched source packages.
cmake_minimum_required(VERSION 3.23)
project(QCustomPlotQt6 LANGUAGES CXX)
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_AUTOMOC ON)
find_package(Qt6 REQUIRED COMPONENTS Widgets PrintSupport)

add_library(QCustomPlotQt6 STATIC ${SOURCES}/qcustomplot/qcustomplot.cpp)
target_link_libraries(QCustomPlotQt6 PUBLIC Qt6::Widgets Qt6::PrintSupport)
target_include_directories(QCustomPlotQt6 INTERFACE $<INSTALL_INTERFACE:include>)

set(config lib/cmake/QCustomPlotQt6)
install(TARGETS QCustomPlotQt6 EXPORT QCustomPlotQt6Targets)
install(FILES ${SOURCES}/qcustomplot/qcustomplot.h DESTINATION include)
install(EXPORT QCustomPlotQt6Targets DESTINATION ${config})
file(WRITE ${CMAKE_BINARY_DIR}/QCustomPlotQt6Config.cmake [[
include(CMakeFindDependencyMacro)
find_dependency(Qt6 COMPONENTS Widgets PrintSupport)
include(${CMAKE_CURRENT_LIST_DIR}/QCustomPlotQt6Targets.cmake)
]])
install(FILES ${CMAKE_BINARY_DIR}/QCustomPlotQt6Config.cmake DESTINATION ${config})
