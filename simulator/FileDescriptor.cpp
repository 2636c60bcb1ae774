#include "simulator/FileDescriptor.h"

#include <cerrno>
#include <system_error>

namespace simulator {

std::string SystemError(const std::string& operation) {
    return operation + ": " + std::generic_category().message(errno);
}

} // namespace simulator
