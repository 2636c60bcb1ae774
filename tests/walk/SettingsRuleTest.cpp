#include "walk/SettingsRule.h"

#include <gtest/gtest.h>

TEST(SettingsRule, A_changed_value_is_not_kept) {
    EXPECT_TRUE(walk::AreKept("[A]\nX=1\n", "[A]\nX=1\n"));
    EXPECT_FALSE(walk::AreKept("[A]\nX=1\n", "[A]\nX=2\n"));
    EXPECT_FALSE(walk::AreKept("[A]\nX=1\n", "[A]\nX=1\nY=2\n"));
    EXPECT_FALSE(walk::AreKept("Project Name=mine\n", "Project Name=other\n"));
}

TEST(SettingsRule, An_empty_text_may_become_the_default_that_it_means) {
    EXPECT_TRUE(walk::AreKept("Project Name=\r\n", "Project Name=< Please type >\r\n"));
    EXPECT_TRUE(walk::AreKept("Period=\r\n", "Period=1\r\n"));
    EXPECT_FALSE(walk::AreKept("Experiment Date=\n", "Experiment Date=today\n"));
}
