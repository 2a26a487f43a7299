/// How many random cases a test draws.
#pragma once

namespace qnTest {

/// `usual` times the environment variable CNTR_TEST_ROUNDS, a whole number from 1 on; `usual` where
/// it is not set. The cases of more rounds begin with those of fewer and go on with others.
int rounds(int usual);

}  // namespace qnTest
