#include <fstream>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <time/read.h>
#include <time/time_varnel.h>

namespace {

/// The last column of docs/format.md by code.
std::map<std::string, std::string> documented()
{
    std::map<std::string, std::string> rows;
    std::ifstream docs(FORMAT_DOCS);
    for (std::string line; std::getline(docs, line);)
        if (line.starts_with("| `%")) {
            const std::size_t last = line.rfind(" | ");
            rows[line.substr(3, 2)] = line.substr(last + 3, line.size() - last - 5);
        }
    return rows;
}

/// Texts that a code reads and texts that it does not, for each way of reading that the column names.
struct way_of_reading {
    std::string column;
    std::vector<std::string> read;
    std::vector<std::string> refused;
};

const way_of_reading ways[] = {
    {"a weekday, full or abbreviated; checked against the date", {"Thu", "THURSDAY"}, {"Fri", "Th", ""}},
    {"a month, full or abbreviated", {"Jul", "july"}, {"Ju", "Aug"}},
    {"its layout", {}, {}},
    {"hundreds of the year, with `%y`", {"20"}, {"19", "x"}},
    {"1 or 2 digits", {}, {"", "x", "123"}},
    {"`%m/%d/%y`", {"07/04/24", "7/4/24"}, {"07/05/24", "07-04-24"}},
    {"1 or 2 digits, or a blank and 1", {}, {"", " x"}},
    {"up to 5 digits, below 1000 with the era", {"2024"}, {"2024 B.C.", "24"}},
    {"1 or 2 digits, 1 to 12; needs `%p`", {"6", "06"}, {"18", "0"}},
    {"1 to 3 digits", {"186"}, {"187", "18", "1860"}},
    {"1 or 2 digits, or a blank and 1; needs `%p`", {"6", "06", " 6"}, {"18"}},
    {"white space", {" ", "\n", " \t\r\n "}, {"", "x"}},
    {"the text for one half, or nothing where there is none", {"PM", "pm"}, {"AM", "P"}},
    {"an era", {"A.D.", "a.d."}, {"B.C.", "AD"}},
    {"1 to 6 digits of a fraction", {"000123"}, {"0001230", "00123", ""}},
    {"`%I:%M:%S %p`", {"06:28:38 PM", "6:28:38 pm"}, {"06:28:38 AM"}},
    {"1 to 5 digits; needs `%P`", {"2024", "02024"}, {"-2024", "202"}},
    {"1 or 2 digits; 60 as 59", {"38"}, {"61", "39"}},
    {"`%H:%M:%S`", {"18:28:38"}, {"18:28"}},
    {"1 or 2 digits; checked, or a date with a weekday and a year", {}, {"25"}},
    {"1 digit; checked against the date", {"4"}, {"5", "04"}},
    {"1 or 2 digits: 69 to 99 are 1969 to 1999, 00 to 68 are 2000 to 2068", {"24"}, {"124", "25"}},
    {"1 to 5 digits and a sign", {"2024", "02024", "+2024"}, {"-2024", "202", "002024"}},
    {"a name of the zone, the one it has then", {"EDT4"}, {"EST5", "PDT7", "EDT"}},
};

const ka_time_and_date moment(ka_time(18, 28, 38, 123), ka_date(7, 4, 2024), ka_time_zone::eastern());

/// Whether a text of one code is read as the moment's, by a format that tells all of it beside.
bool reads(const std::string& code, const std::string& text)
{
    const std::string all = "%Y-%m-%d %H:%M:%S.%q|%C %y %I %p %P %s|";
    const auto read = ka_read_time_and_date(moment.to_string(all) + '[' + text + ']', all + '[' + code + ']',
                                            moment.time_zone());
    return read.has_value() && *read == moment;
}

}

/// The column says how each code is read; here is what that means.
TEST(format_table, reads_what_the_docs_say)
{
    const auto rows = documented();
    EXPECT_EQ(rows.size(), 34u);
    for (const auto& [code, column] : rows) {
        SCOPED_TRACE(code + ": " + column);
        const way_of_reading* found = nullptr;
        for (const way_of_reading& way : ways)
            if (way.column == column)
                found = &way;
        ASSERT_NE(found, nullptr);
        EXPECT_TRUE(reads(code, moment.to_string(code)));
        for (const std::string& text : found->read)
            EXPECT_TRUE(reads(code, text)) << text;
        for (const std::string& text : found->refused)
            EXPECT_FALSE(reads(code, text)) << text;
    }
}
