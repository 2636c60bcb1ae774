# Warnings for the project's own code; CI turns them into errors with CMAKE_COMPILE_WARNING_AS_ERROR
# (cmake 3.24 and later).
add_library(vantrel_warnings INTERFACE)
target_compile_options(vantrel_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
