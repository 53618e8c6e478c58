#include <sstream>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include <time/stopwatch.h>

namespace {

std::string printed(const ka_stopwatch& watch)
{
    std::ostringstream out;
    watch.print(out);
    return out.str();
}

void pass_time() { std::this_thread::sleep_for(std::chrono::milliseconds(5)); }

TEST(stopwatch, states)
{
    const ka_stopwatch fresh;
    ka_stopwatch watch = fresh;
    EXPECT_EQ(printed(fresh), "0 seconds, stopped");
    watch.stop();
    watch.reset();
    EXPECT_TRUE(watch == fresh && !watch.running() && watch.lap() == ka_time_period::zero_period);

    watch.start();
    const ka_stopwatch started = watch;
    EXPECT_TRUE(watch.running() && started == watch && !(watch == fresh));
    EXPECT_TRUE(printed(watch).ends_with(" seconds, running")) << printed(watch);
    pass_time();
    watch.start();
    EXPECT_TRUE(watch == started);

    const ka_time_period lap = watch.lap();
    EXPECT_TRUE(lap > ka_time_period::zero_period && lap.microseconds() % 1000 == 0);
    EXPECT_TRUE(watch == started);
    watch.stop();
    const ka_time_period first_run = watch;
    EXPECT_TRUE(first_run >= lap && !watch.running() && started.running());
    EXPECT_EQ(printed(watch), first_run.to_string() + ", stopped");
    pass_time();
    watch.stop();
    EXPECT_EQ(watch.lap(), first_run);

    const ka_stopwatch stopped = watch;
    watch.start();
    EXPECT_GE(watch.lap(), first_run);
    pass_time();
    ka_stopwatch copy;
    copy = watch;
    copy.stop();
    EXPECT_TRUE(copy.lap() > first_run && watch.running());

    watch.reset();
    EXPECT_TRUE(!watch.running() && watch.lap() == ka_time_period::zero_period);
    EXPECT_FALSE(watch == fresh || watch == stopped);
    copy.reset();
    EXPECT_TRUE(copy == watch);
}

}
