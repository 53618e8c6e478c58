#include <string>

#include <gtest/gtest.h>

#include <time/time_varnel.h>

TEST(stop, balanced_counts_change_nothing)
{
    const std::string& name = ka_date::ad_name();
    const ka_time_zone& zone = ka_time_zone::pacific();
    ka_date::ad_name("of our time");
    ka_init_time_varnel();
    ka_exit_time_varnel();
    EXPECT_EQ(&name, &ka_date::ad_name());
    EXPECT_EQ(&zone, &ka_time_zone::pacific());
    EXPECT_EQ(name, "of our time");
    ka_date::ad_name("A.D.");
}

TEST(stop, a_restart_builds_anew_and_leaves_a_callers_zone_alone)
{
    ka_time_zone mine(ka_time_period(3600), "MINE");
    ka_time_and_date::default_time_zone(mine);
    ka_date::ad_name("of our time");
    ka_time::default_format("%H");

    ka_exit_time_varnel();
    EXPECT_EQ(ka_date(2, 29, 2024).weekday(), 5);
    ka_exit_time_varnel();
    ka_init_time_varnel();
    ka_init_time_varnel();

    EXPECT_EQ(mine.name(), "MINE1");
    EXPECT_NE(&ka_time_and_date::default_time_zone(), &mine);
    EXPECT_EQ(ka_date::ad_name(), "A.D.");
    EXPECT_EQ(ka_time(18, 28, 38, 123).to_string(), "18:28:38:000123");
    EXPECT_EQ(ka_date::max_date().julian_day(), 13688960);
}
