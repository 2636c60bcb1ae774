# Warnings for the project's own code; CI turns them into errors with CMAKE_COMPILE_WARNING_AS_ERROR
# (cmake 3.24 and later).
add_library(vantrel_warnings INTERFACE)
target_compile_options(vantrel_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # This version sees overlaps and overflows inside std::string that cannot be (its bugs 105651 and
  # 105329).
  target_compile_options(vantrel_warnings INTERFACE
    -Wno-restrict -Wno-stringop-overflow -Wno-stringop-overread -Wno-array-bounds)
endif()
