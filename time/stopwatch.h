#pragma once

#include <concepts>
#include <iosfwd>

#include <time/export.h>
#include <time/timedate.h>
#include <time/tperiod.h>

/// Adds up the time between `start` and `stop`, on the wall clock.
///
///     ka_stopwatch watch;
///     watch.start();
///     work();
///     watch.stop();
///     watch.lap().to_string();    // "1.250000 seconds"
///
/// Resolution: one millisecond, that of `ka_time_and_date::now`. It is the wall
/// clock: a step of the machine's clock shows, down to a negative total.
/// Failure: where the clock can't be read, `failure`, and nothing has changed.
/// Threads: a plain value; the library must be started.
class KA_TIME_VARNEL_API ka_stopwatch {
public:
    /// Stopped, at zero.
    ka_stopwatch();
    ka_stopwatch(const ka_stopwatch&) noexcept = default;
    /// A copy of a running watch runs on, from the same start.
    ka_stopwatch& operator=(const ka_stopwatch&) noexcept = default;

    /// Starts a run that adds to the total; a running watch runs on.
    void start();
    /// Ends the run and adds it to the total; a stopped watch stays as it is.
    void stop();
    /// Stops, and drops the total and the run.
    void reset() noexcept;

    /// The total, with the present run where there is one. Changes nothing.
    ka_time_period lap() const;
    operator ka_time_period() const { return lap(); }
    bool running() const noexcept { return running_; }

    /// Same start, same total, both running or both stopped.
    bool operator==(const ka_stopwatch& other) const noexcept;

    /// Writes the lap and the state: "1.250000 seconds, stopped".
    void print(std::ostream& stream) const;

private:
    ka_time_and_date start_;
    ka_time_period elapsed_;
    bool running_ = false;
};

/// The lap beside a period, on either side. Declared, since only the compilers of
/// C++20's first years find it by the conversion.
bool operator==(const std::same_as<ka_stopwatch> auto& watch,
                const std::same_as<ka_time_period> auto& period);

#include <time/inline/stopwatch.h>
