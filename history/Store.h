#pragma once

#include "base/RunTimeError.h"
#include "history/Row.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace History {

/// The file is no history, or not a whole one any more.
class Damaged : public RunTimeError {
public:
    using RunTimeError::RunTimeError;
};

/// Which rows are wanted. What is not told does not restrict them.
struct Wish {
    std::optional<Kind> kind;
    std::optional<std::string> electrode, serialNo, file;
    std::string from, to;   ///< sortable times, both included
    std::int64_t after = 0; ///< rows with greater numbers
    bool newestFirst = false;
    std::optional<std::size_t> most;
};

/// The history's file, which only grows. Several programs may have it open and write.
class Store {
public:
    virtual ~Store() = default;

    /// Adds rows behind the last one, all or none; they are on the disk when it returns. Throws
    /// RunTimeError, Damaged where the file is.
    virtual void Append(std::span<const Row::Fields> rows) = 0;

    /// Throws as Append does.
    virtual std::vector<Row> Rows(const Wish& wish) const = 0;

    /// The greatest number that a row was ever given.
    virtual std::int64_t LastNumber() const = 0;

    /// The file has been renamed or removed under the open store.
    virtual bool HasMoved() const = 0;
};

/// Whether the program for this system can keep a history at all.
bool CanBeKept();

/// Opens the file or makes it; reads it once through to see that it is whole. Throws RunTimeError,
/// also where none can be kept; Damaged where the file is no history.
std::unique_ptr<Store> OpenStore(const std::filesystem::path& file);

/// The same of a file that is there, for who only reads: none is made, and nothing is written.
std::unique_ptr<const Store> OpenStoreToRead(const std::filesystem::path& file);

} // namespace History
