# Headers that nearly every file of a kind includes, compiled once. They spare more than half of the
# time of a build from nothing.
option(VANTREL_PRECOMPILE "Precompile the headers of the libraries in use" ON)

set(vantrel_standard_headers
  <algorithm> <array> <chrono> <cmath> <cstdint> <filesystem> <fstream> <functional> <map> <memory>
  <optional> <span> <string> <string_view> <utility> <vector>)

function(vantrel_precompile target)
  if(VANTREL_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE ${vantrel_standard_headers} ${ARGN})
  endif()
endfunction()

function(vantrel_precompile_as target other)
  if(VANTREL_PRECOMPILE)
    target_precompile_headers(${target} REUSE_FROM ${other})
  endif()
endfunction()
