#include "walk/Shrink.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

Course Steps(int count) {
    Course course;
    for (int i = 0; i < count; ++i)
        course.push_back({"press", "Main", QString::number(i), {}, 5});
    return course;
}

bool Holds(const Course& course, const QString& control) {
    return std::ranges::any_of(course, [&](const Step& step) { return step.control == control; });
}

bool Never() {
    return false;
}

} // namespace

TEST(Shrink, Leaves_the_steps_that_the_failure_needs_in_their_order) {
    const auto fails = [](const Course& course) {
        return Holds(course, "17") && Holds(course, "63");
    };
    const Course found = walk::Shrink(Steps(100), fails, Never);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].control, "17");
    EXPECT_EQ(found[1].control, "63");
}

TEST(Shrink, Leaves_a_step_out_that_could_not_go_before_another_one) {
    // 3 may go only when 7 has gone.
    const auto fails = [](const Course& course) {
        return Holds(course, "9") && (Holds(course, "3") || !Holds(course, "7"));
    };
    const Course found = walk::Shrink(Steps(10), fails, Never);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].control, "9");
}

TEST(Shrink, Keeps_what_it_has_when_the_time_is_up) {
    int tries = 0;
    const auto fails = [&tries](const Course& course) {
        ++tries;
        return Holds(course, "0");
    };
    const Course found = walk::Shrink(Steps(64), fails, [&tries] { return tries == 3; });
    EXPECT_EQ(tries, 3);
    EXPECT_LT(found.size(), 64U);
    EXPECT_TRUE(Holds(found, "0"));
}

TEST(Shrink, Ends_where_nothing_is_needed_and_where_everything_is) {
    EXPECT_TRUE(walk::Shrink(
                    Steps(5), [](const Course&) { return true; }, Never)
                    .empty());
    EXPECT_EQ(walk::Shrink(
                  Steps(5), [](const Course& c) { return c.size() == 5; }, Never)
                  .size(),
              5U);
}

TEST(Course, Is_read_as_it_was_written) {
    const QTemporaryDir folder;
    const Course course = {{"write", "Setup", "Project", "a\tb\\t\nc", 12},
                           {"answer", {}, "Yes", QString::fromUtf8("\xC3\xA4?"), 0}};
    WriteCourse(folder.filePath("course"), course);
    EXPECT_EQ(ReadCourse(folder.filePath("course")), course);
}
