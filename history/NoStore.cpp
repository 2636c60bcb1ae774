#include "history/Store.h"

namespace History {

bool CanBeKept() {
    return false;
}

std::unique_ptr<Store> OpenStore(const std::filesystem::path& /*file*/) {
    throw RunTimeError("The program for this system keeps no history");
}

std::unique_ptr<const Store> OpenStoreToRead(const std::filesystem::path& file) {
    return OpenStore(file);
}

} // namespace History
