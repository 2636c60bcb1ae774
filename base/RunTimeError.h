#pragma once

#include <stdexcept>
#include <string>

/// What low-level code throws: a plain description for the error message box, such as "Division by
/// zero" or "Writing run.4ch: Disk full" (the operation, the object, the reason).
class RunTimeError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};
