#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// The system's calls on files, of which one fails on demand. The program's own functions of these
/// names stand before the system's, so that the standard library's calls fail, too. For a child
/// process of a test: what it has left behind is looked at from outside.
namespace FailingCalls {

enum class Fault {
    noSpace,     ///< "No space left on device"
    inputOutput, ///< "Input/output error"
    permission,  ///< "Permission denied"
    interrupted, ///< a signal came; the call may be made again
    partly,      ///< a write takes half of its bytes; other calls succeed
    gone,        ///< the medium has gone: this call fails, and every one after it
    end,         ///< the process ends in place of the call
};

inline constexpr std::array allFaults{Fault::noSpace,     Fault::inputOutput, Fault::permission,
                                      Fault::interrupted, Fault::partly,      Fault::gone,
                                      Fault::end};

std::string NameOf(Fault fault);

/// Is told of each call that has changed a file, after it has. Files go by the names they have
/// then.
class Watcher {
public:
    virtual ~Watcher() = default;
    virtual void Made(const std::string& file) = 0;
    virtual void Wrote(const std::string& file, std::size_t at, std::string_view bytes) = 0;
    virtual void Cut(const std::string& file, std::size_t length) = 0;
    /// A file's content, or the names in a folder, have reached the disk.
    virtual void Flushed(const std::string& fileOrFolder) = 0;
    virtual void Renamed(const std::string& from, const std::string& to) = 0;
    virtual void Removed(const std::string& file) = 0;
};

/// Does the work in this process, with no fault, and tells the watcher of its calls.
void Watch(Watcher& watcher, const std::function<void()>& work);

/// How a child process has ended.
struct Outcome {
    int calls = 0;         ///< calls on files that it has made
    bool finished = false; ///< the work has returned
};

/// Does the work in a child process, where the `failing`th call on a file, from 1 on, meets the
/// fault; 0 lets all succeed. The child runs no destructor of the parent's objects.
Outcome InChild(const std::function<void()>& work, int failing = 0, Fault fault = Fault::end);

} // namespace FailingCalls
