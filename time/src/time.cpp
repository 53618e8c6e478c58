#include <ostream>

#include <time/time_of_day.h>
#include <time/timedate.h>

#include "platform/platform.h"
#include "throw.h"

ka_time::ka_time(const std::tm& fields, unsigned int microseconds) { time(fields, microseconds); }

void ka_time::time(const std::tm& fields, unsigned int microseconds)
{
    time(static_cast<unsigned short>(fields.tm_hour), static_cast<unsigned short>(fields.tm_min),
         static_cast<unsigned short>(fields.tm_sec), microseconds);
}

ka_time ka_time::now() { return ka_time(platform::read_wall_clock().since_midnight()); }

const ka_time& ka_time::min_time() noexcept { return ka_time_and_date::min_time(); }

const ka_time& ka_time::max_time() noexcept { return ka_time_and_date::max_time(); }

const std::string& ka_time::am_name() noexcept { return *ka_time_and_date::am_name_; }

const std::string& ka_time::pm_name() noexcept { return *ka_time_and_date::pm_name_; }

void ka_time::am_name(const std::string& text) { *ka_time_and_date::am_name_ = text; }

void ka_time::pm_name(const std::string& text) { *ka_time_and_date::pm_name_ = text; }

std::string ka_time::to_string() const { return to_string(*ka_time_and_date::default_time_format_); }

void ka_time::print(std::ostream& stream) const { stream << to_string(); }

std::string ka_time::default_format() { return *ka_time_and_date::default_time_format_; }

void ka_time::default_format(const std::string& format) { *ka_time_and_date::default_time_format_ = format; }

void ka_time::refuse(given hours, given minutes, given seconds, given microseconds)
{
    throw_error(ka_invalid_time, {KA_SOURCE, __LINE__}, hours, ":", minutes, ":", seconds, ":", microseconds);
}
