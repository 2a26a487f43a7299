// Runs the registered benchmarks. With --check it compares the answers of the libraries instead.
#include "support/questions.h"

#include <cstdio>
#include <cstring>
#include <exception>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

/// Lets the program keep the memory it had once: for blocks of some sizes in some order the time of
/// every library would else be that of giving pages back and getting them again.
void keepMemory()
{
#ifdef __GLIBC__
    constexpr int kNever = 1 << 30;
    mallopt(M_MMAP_THRESHOLD, kNever);
    mallopt(M_TRIM_THRESHOLD, kNever);
#endif
}

}  // namespace

int main(int argc, char** argv)
{
    try {
        keepMemory();
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
