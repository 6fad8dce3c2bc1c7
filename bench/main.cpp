// SPDX-License-Identifier: Apache-2.0

#include <malloc.h>

#include "measure.h"

int main(int argc, char** argv) {
    // Large blocks then come from memory that the process has touched before, as in a service that runs for
    // long; otherwise it depends on the sizes of the blocks before whether the system's clearing of fresh
    // pages is timed.
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, 1 << 30);

    bench::RegisterBenchmarks();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
