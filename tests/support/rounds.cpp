// The one place that reads CNTR_TEST_ROUNDS.
#include "tests/support/rounds.h"

#include <cstdlib>
#include <stdexcept>

int qnTest::rounds(int usual)
{
    char const* const text = std::getenv("CNTR_TEST_ROUNDS");
    int const times = text ? std::atoi(text) : 1;
    if (times < 1)
        throw std::invalid_argument("CNTR_TEST_ROUNDS is not a whole number from 1 on");
    return usual * times;
}
