#include <time/stopwatch.h>

#include <ostream>

ka_stopwatch::ka_stopwatch()
    : start_(ka_time_and_date::min_time(), ka_time_and_date::min_date()),
      elapsed_(ka_time_period::zero_period)
{}

void ka_stopwatch::start()
{
    if (running_)
        return;
    start_ = ka_time_and_date::now();
    running_ = true;
}

void ka_stopwatch::stop()
{
    elapsed_ = lap();
    running_ = false;
}

void ka_stopwatch::reset() noexcept
{
    elapsed_ = ka_time_period::zero_period;
    running_ = false;
}

ka_time_period ka_stopwatch::lap() const
{
    return running_ ? elapsed_ + (ka_time_and_date::now() - start_) : elapsed_;
}

void ka_stopwatch::print(std::ostream& stream) const
{
    lap().print(stream);
    stream << ", " << (running_ ? "running" : "stopped");
}
