# Of Qt's SVG module the program needs the generator alone, which writes pictures. The module's
# source for Qt 6 is not in the archive; the generator of Qt 5 differs in two calls.
cmake_minimum_required(VERSION 3.23)
project(SvgGenerator LANGUAGES CXX)
set(CMAKE_CXX_STANDARD 17)
find_package(Qt6 REQUIRED COMPONENTS Gui)

set(svg ${SOURCES}/qtsvg-opensource-src/src/svg)
set(include ${CMAKE_BINARY_DIR}/include/QtSvg)
file(COPY ${svg}/qtsvgglobal.h ${svg}/qsvggenerator.h DESTINATION ${include})
file(WRITE ${include}/QSvgGenerator "#include \"qsvggenerator.h\"\n")
file(READ ${svg}/qsvggenerator.cpp text)
foreach(change "midRef(|mid(" "#include \"qtextcodec.h\"|"
    "setCodec(QTextCodec::codecForName(\"UTF-8\"))|setEncoding(QStringConverter::Utf8)")
  string(REGEX MATCH "^([^|]*)[|](.*)$" change "${change}")
  set(new "${CMAKE_MATCH_2}")
  string(FIND "${text}" "${CMAKE_MATCH_1}" place)
  if(place EQUAL -1)
    message(FATAL_ERROR "The generator's source has changed: no ${CMAKE_MATCH_1}")
  endif()
  string(REPLACE "${CMAKE_MATCH_1}" "${new}" text "${text}")
endforeach()
file(WRITE ${CMAKE_BINARY_DIR}/qsvggenerator.cpp "${text}")

add_library(Qt6Svg STATIC ${CMAKE_BINARY_DIR}/qsvggenerator.cpp)
set_target_properties(Qt6Svg PROPERTIES EXPORT_NAME Svg)
target_link_libraries(Qt6Svg PUBLIC Qt6::Gui PRIVATE Qt6::GuiPrivate)
target_include_directories(Qt6Svg
  PUBLIC $<INSTALL_INTERFACE:include> $<INSTALL_INTERFACE:include/QtSvg>
  PRIVATE ${CMAKE_BINARY_DIR}/include ${include})

set(config lib/cmake/Qt6Svg)
install(TARGETS Qt6Svg EXPORT Qt6SvgTargets)
install(DIRECTORY ${include} DESTINATION include)
install(EXPORT Qt6SvgTargets NAMESPACE Qt6:: DESTINATION ${config})
file(WRITE ${CMAKE_BINARY_DIR}/Qt6SvgConfig.cmake [[
include(CMakeFindDependencyMacro)
find_dependency(Qt6Gui)
include(${CMAKE_CURRENT_LIST_DIR}/Qt6SvgTargets.cmake)
]])
include(CMakePackageConfigHelpers)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/Qt6SvgConfigVersion.cmake
  VERSION ${Qt6_VERSION} COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/Qt6SvgConfig.cmake ${CMAKE_BINARY_DIR}/Qt6SvgConfigVersion.cmake
  DESTINATION ${config})
