#include "access.h"

// A host that was built against 1.0 has the inline operations of 1.0 in it, and
// where one of them refuses a value it calls these, by names that no header
// holds any more. They go when the major version does.

struct KA_TIME_VARNEL_API ka_access::refusals_of_1_0 {
    [[noreturn]] static void day(long long day) __asm__("_ZN7ka_date10refuse_dayEx");
    [[noreturn]] static void high_day(unsigned long long day) __asm__("_ZN7ka_date10refuse_dayEy");
    [[noreturn]] static void date(unsigned short month, unsigned short day,
                                  short year) __asm__("_ZN7ka_date11refuse_dateEtts");
    [[noreturn]] static void month(unsigned short month) __asm__("_ZN7ka_date12refuse_monthEt");
    [[noreturn]] static void
    month_of_weekday(unsigned short month) __asm__("_ZN7ka_date23refuse_month_of_weekdayEt");
    [[noreturn]] static void year(short year) __asm__("_ZN7ka_date11refuse_yearEs");
    [[noreturn]] static void weekday(unsigned short weekday) __asm__("_ZN7ka_date14refuse_weekdayEt");

    [[noreturn]] static void
    recurring_month(unsigned short month) __asm__("_ZN16ka_calendar_date12refuse_monthEt");
    [[noreturn]] static void recurring_day(unsigned short day) __asm__("_ZN16ka_calendar_date10refuse_dayEt");
    [[noreturn]] static void
    recurring_weekday(unsigned short weekday) __asm__("_ZN16ka_calendar_date14refuse_weekdayEt");
    [[noreturn]] static void recurring_year(short year) __asm__("_ZN16ka_calendar_date11refuse_yearEs");

    [[noreturn]] static void period(long long seconds,
                                    long long microseconds) __asm__("_ZN14ka_time_period6refuseExx");
    [[noreturn]] static void fields(int days, int hours, int minutes, int seconds,
                                    int microseconds) __asm__("_ZN14ka_time_period6refuseEiiiii");
    [[noreturn]] static void time(unsigned short hours, unsigned short minutes, unsigned short seconds,
                                  unsigned int microseconds) __asm__("_ZN7ka_time6refuseEtttj");
};

void ka_access::refusals_of_1_0::day(long long day) { ka_date::refuse_day(day); }
void ka_access::refusals_of_1_0::high_day(unsigned long long day) { ka_date::refuse_day(day); }
void ka_access::refusals_of_1_0::date(unsigned short month, unsigned short day, short year)
{
    ka_date::refuse_date(month, day, year);
}
void ka_access::refusals_of_1_0::month(unsigned short month) { ka_date::refuse_month(month); }
void ka_access::refusals_of_1_0::month_of_weekday(unsigned short month)
{
    ka_date::refuse_month_of_weekday(month);
}
void ka_access::refusals_of_1_0::year(short year) { ka_date::refuse_year(year); }
void ka_access::refusals_of_1_0::weekday(unsigned short weekday) { ka_date::refuse_weekday(weekday); }

void ka_access::refusals_of_1_0::recurring_month(unsigned short month)
{
    ka_calendar_date::refuse_month(month);
}
void ka_access::refusals_of_1_0::recurring_day(unsigned short day) { ka_calendar_date::refuse_day(day); }
void ka_access::refusals_of_1_0::recurring_weekday(unsigned short weekday)
{
    ka_calendar_date::refuse_weekday(weekday);
}
void ka_access::refusals_of_1_0::recurring_year(short year) { ka_calendar_date::refuse_year(year); }

void ka_access::refusals_of_1_0::period(long long seconds, long long microseconds)
{
    ka_time_period::refuse(seconds, microseconds);
}
void ka_access::refusals_of_1_0::fields(int days, int hours, int minutes, int seconds, int microseconds)
{
    ka_time_period::refuse(days, hours, minutes, seconds, microseconds);
}
void ka_access::refusals_of_1_0::time(unsigned short hours, unsigned short minutes, unsigned short seconds,
                                      unsigned int microseconds)
{
    ka_time::refuse(hours, minutes, seconds, microseconds);
}
