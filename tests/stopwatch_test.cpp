#include <chrono>
#include <thread>

#include <gtest/gtest.h>

#include <time/stopwatch.h>

#include "printers.h"

namespace {

void pass_time() { std::this_thread::sleep_for(std::chrono::milliseconds(5)); }

TEST(stopwatch, that_never_ran)
{
    const ka_stopwatch fresh;
    ka_stopwatch watch = fresh;
    watch.stop();
    watch.reset();
    EXPECT_TRUE(watch == fresh);
    EXPECT_FALSE(watch.running());
    EXPECT_EQ(shown(watch), "0 seconds, stopped");
}

TEST(stopwatch, runs_until_it_is_stopped)
{
    ka_stopwatch watch;
    watch.start();
    const ka_stopwatch started = watch;
    EXPECT_TRUE(watch.running());
    EXPECT_TRUE(shown(watch).ends_with(" seconds, running")) << shown(watch);
    pass_time();
    watch.start();
    EXPECT_TRUE(watch == started) << "a watch that runs is not started again";
    const ka_time_period lap = watch.lap();
    EXPECT_GT(lap, ka_time_period::zero_period);
    EXPECT_EQ(lap.microseconds() % 1000, 0);
    EXPECT_TRUE(watch == started) << "a lap changes nothing";

    watch.stop();
    const ka_stopwatch stopped = watch;
    EXPECT_FALSE(watch.running());
    EXPECT_GE(stopped.lap(), lap);
    EXPECT_EQ(shown(watch), ka_time_period(watch).to_string() + ", stopped");
    pass_time();
    watch.stop();
    EXPECT_TRUE(watch == stopped) << "a watch that stands is not stopped again";
}

TEST(stopwatch, adds_up_what_it_ran)
{
    ka_stopwatch watch;
    watch.start();
    pass_time();
    pass_time();
    watch.stop();
    const ka_time_period total = watch.lap();
    watch.start();
    EXPECT_GE(watch.lap(), total);
    watch.stop();
    EXPECT_GE(watch.lap(), total);
    watch.start();
    watch.reset();
    EXPECT_FALSE(watch.running());
    EXPECT_EQ(watch.lap(), ka_time_period::zero_period);
}

TEST(stopwatch, equal_are_those_of_the_same_start_total_and_state)
{
    const ka_stopwatch fresh;
    ka_stopwatch running = fresh;
    running.start();
    EXPECT_FALSE(running == fresh);
    ka_stopwatch reset = running;
    reset.reset();
    EXPECT_FALSE(reset == running) << "of the same start and total";
    EXPECT_FALSE(reset == fresh) << "of the same total, and stopped as well";
    pass_time();
    ka_stopwatch stopped = running;
    stopped.stop();
    EXPECT_TRUE(running.running()) << "a copy is a watch of its own";
    EXPECT_FALSE(reset == stopped) << "of the same start, and stopped as well";
    stopped.reset();
    EXPECT_TRUE(stopped == reset);
}

}
