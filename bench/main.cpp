#include "BenchRig.h"

#include <QApplication>

#include <benchmark/benchmark.h>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    releaseRig();
    return 0;
}
