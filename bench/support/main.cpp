// Runs the registered benchmarks. With --check it compares the answers of the libraries instead.
#include "support/questions.h"

#include <cstdio>
#include <cstring>
#include <exception>

int main(int argc, char** argv)
{
    try {
        if (argc == 2 && std::strcmp(argv[1], "--check") == 0)
            return qnBench::answersAgree(10000) ? 0 : 1;
        qnBench::registerAll();
        benchmark::Initialize(&argc, argv);
        if (benchmark::ReportUnrecognizedArguments(argc, argv))
            return 2;
        benchmark::RunSpecifiedBenchmarks();
        return 0;
    } catch (std::exception const& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
