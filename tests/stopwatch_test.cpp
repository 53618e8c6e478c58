#include <sstream>
#include <thread>

#include <gtest/gtest.h>

#include <time/stopwatch.h>

namespace {

std::string printed(const ka_stopwatch& watch)
{
    std::ostringstream out;
    return watch.print(out), out.str();
}

void pass_time() { std::this_thread::sleep_for(std::chrono::milliseconds(5)); }

TEST(stopwatch, states)
{
    const ka_stopwatch fresh;
    ka_stopwatch watch = fresh;
    watch.stop();
    watch.reset();
    EXPECT_TRUE(watch == fresh && !watch.running());
    EXPECT_EQ(printed(watch), "0 seconds, stopped");

    watch.start();
    const ka_stopwatch started = watch;
    EXPECT_TRUE(watch.running() && started == watch && !(watch == fresh));
    ka_stopwatch dropped = started;
    dropped.reset();
    EXPECT_FALSE(dropped == started); // of the same start and total
    EXPECT_TRUE(printed(watch).ends_with(" seconds, running")) << printed(watch);
    pass_time();
    watch.start();
    const ka_time_period lap = watch.lap();
    EXPECT_TRUE(lap > ka_time_period::zero_period && lap.microseconds() % 1000 == 0 && watch == started);

    watch.stop();
    const ka_stopwatch stopped = watch;
    EXPECT_TRUE(stopped.lap() >= lap && !watch.running() && started.running());
    EXPECT_FALSE(dropped == stopped); // of the same start, and stopped as well
    EXPECT_EQ(printed(watch), ka_time_period(watch).to_string() + ", stopped");
    pass_time();
    watch.stop();
    EXPECT_TRUE(watch == stopped);

    watch.start();
    pass_time();
    ka_stopwatch copy = watch;
    copy.stop();
    EXPECT_TRUE(copy.lap() > stopped.lap() && watch.running());
    watch.reset();
    EXPECT_TRUE(!watch.running() && watch.lap() == ka_time_period::zero_period);
    EXPECT_FALSE(watch == fresh || watch == stopped);
    copy.reset();
    EXPECT_TRUE(copy == watch);
}

}
