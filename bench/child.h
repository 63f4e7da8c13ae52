// Whole processes, measured from outside.
#pragma once

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

/// This program.
std::filesystem::path OwnProgram();

/// Runs a program, its output thrown away, and counts its time and its processor time as those of
/// an iteration, as Measure does. Ends this program when the other one ends with another status.
void MeasureChild(benchmark::State& state, const std::vector<std::string>& command,
                  int expected = 0);

}  // namespace bench
