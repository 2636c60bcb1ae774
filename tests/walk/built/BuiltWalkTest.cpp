// A random walk over the program as it has been built, on an X server and an accessibility bus of
// its own, with a line that fails as it likes and a program that is killed now and then.

#include "walk/built/BuiltWalk.h"
#include "support/Search.h"
#include "walk/Supervisor.h"

#include <QCoreApplication>

#include <iostream>

using namespace std::chrono_literals;

namespace {

constexpr auto usualLength = 15s;
constexpr auto aLife = 8s;

/// Clock and disk only in a search that was asked for, and its repetition; the line always.
BuiltAnalyst::Troubles TroublesWanted() {
    const bool isShort = search::Length(usualLength) <= usualLength && walk::CourseAsked().empty();
    return isShort ? BuiltAnalyst::Troubles::ofLine : BuiltAnalyst::Troubles::ofLineClockAndDisk;
}

class RandomBuiltWalk : public BuiltWalk {
protected:
    RandomBuiltWalk() : BuiltWalk(search::Seed(), TroublesWanted()) {}
};

} // namespace

TEST_F(RandomBuiltWalk, Whatever_is_pressed_the_built_program_keeps_its_rules) {
    const QDeadlineTimer end(search::Length(usualLength));
    while (!HasFailure() && (IsRepeated() ? !CourseEnded() : !end.hasExpired()))
        Live(aLife);
    if (!HasFailure())
        JudgeSettings();
    std::cout << Summary() << std::endl;
}

int main(int argc, char* argv[]) {
    if (!walk::IsToWalk())
        return walk::Supervise(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
