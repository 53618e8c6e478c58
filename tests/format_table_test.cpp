#include <fstream>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include <time/language.h>
#include <time/timedate.h>

/// The table of docs/format.md is what users go by: each row's example is what
/// the row's code prints, and each letter that is no row prints itself.
TEST(format_table, prints_what_the_docs_say)
{
    const ka_time_and_date moment(ka_time(18, 28, 38, 123), ka_date(7, 4, 2024), ka_time_zone::eastern());
    std::map<std::string, std::string> examples = {{"%n", "\n"}, {"%t", "\t"}};
    std::ifstream docs(FORMAT_DOCS);
    for (std::string line; std::getline(docs, line);) {
        if (!line.starts_with("| `%"))
            continue;
        const std::size_t example = line.find(" | ", 7) + 3;
        if (line[example] == '`')
            examples[line.substr(3, 2)] = line.substr(example + 1, line.find('`', example + 1) - example - 1);
    }
    EXPECT_EQ(examples.size(), 34u);
#ifdef _WIN32
    // The docs have the layouts of the C locale, which no user has there.
    const ka_language user = ka_language::user();
    examples["%c"] = moment.to_string(user.time_and_date_layout().c_str());
    examples["%x"] = moment.to_string(user.date_layout().c_str());
    examples["%X"] = moment.to_string(user.time_layout().c_str());
#endif
    for (int byte = 1; byte < 256; ++byte) {
        const std::string letter(1, static_cast<char>(byte));
        if (std::string("-0123456789").find(letter) != std::string::npos)
            continue;
        const auto example = examples.find("%" + letter);
        EXPECT_EQ(moment.to_string(("%" + letter).c_str()),
                  example == examples.end() ? letter : example->second)
            << letter;
    }
}
