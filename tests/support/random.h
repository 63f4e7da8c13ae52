#pragma once

#include <cstdint>
#include <random>

/// The same numbers on every platform for the same seed.
class Random {
 public:
  explicit Random(std::uint32_t seed) : m_engine(seed) {}

  /// Any number of 32 bits.
  std::uint32_t operator()() { return static_cast<std::uint32_t>(m_engine()); }
  /// 0 to `below` - 1.
  std::uint32_t operator()(std::uint32_t below) { return (*this)() % below; }

 private:
  std::mt19937 m_engine;
};
