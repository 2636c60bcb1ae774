#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>

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

/// How a child process has ended.
struct Outcome {
    int calls = 0;         ///< calls on files that it has made
    bool finished = false; ///< the work has returned
};

/// Does the work in a child process, where the `failing`th call on a file, from 1 on, meets the
/// fault; 0 lets all succeed. The child runs no destructor of the parent's objects.
Outcome InChild(const std::function<void()>& work, int failing = 0, Fault fault = Fault::end);

} // namespace FailingCalls
