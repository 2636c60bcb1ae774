#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// The words of a line in order, taken one by one. What goes wrong is thrown as RunTimeError.
class Words {
public:
    explicit Words(std::string_view line);

    bool AtEnd() const { return next_ == words_.size(); }

    /// The next word, empty at the end; stays.
    std::string_view Peek() const;

    /// Takes the next word if it is this one.
    bool TakeIf(std::string_view word);

    /// Takes the next word; `what` is missed at the end.
    std::string Take(std::string_view what);

    /// Takes the next word as a number; it must be within the bounds.
    double TakeNumber(std::string_view what, double least, double most);

    /// The same, whole.
    int TakeInteger(std::string_view what, int least, int most);

    /// A number if the next word is one.
    bool NumberFollows() const;

    /// Throws when words are left.
    void ExpectEnd() const;

private:
    std::vector<std::string> words_;
    std::size_t next_ = 0;
};

} // namespace simulator
