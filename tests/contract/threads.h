#pragma once

#include <functional>

constexpr unsigned kThreads = 8;

/// Runs the work in `kThreads` threads, numbered from 0 and started as much together as can be had.
void InThreads(const std::function<void(unsigned number)>& work);
