// XML checked by taking it apart.
#include "tests/support/xml.h"

#include <regex>
#include <utility>

bool qnTest::isWellFormed(std::string xml)
{
    for (char const c : xml)
        if (static_cast<unsigned char>(c) < 0x20 && c != '\n')
            return false;
    // Elements that hold none go until nothing is left.
    std::string const text = R"(([^<>&"]|&(amp|lt|gt|quot);)*)";
    std::regex const element(R"(<\?[^<>]*>|<([A-Za-z]+)( [A-Za-z:-]+=")" + text + R"(")*(/>|>)" +
                             text + R"(</\1>)\n?)");
    for (std::string before; before != xml;)
        before = std::exchange(xml, std::regex_replace(xml, element, ""));
    return xml.find_first_not_of('\n') == std::string::npos;
}
