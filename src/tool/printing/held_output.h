#pragma once

#include <iostream>
#include <sstream>
#include <string>

namespace zortunedex::kit::tool {

/// Holds back what is printed while it lives.
class HeldOutput {
 public:
  HeldOutput() : m_target(std::cout.rdbuf(m_text.rdbuf())) {}
  HeldOutput(const HeldOutput&) = delete;
  HeldOutput& operator=(const HeldOutput&) = delete;
  ~HeldOutput() { std::cout.rdbuf(m_target); }

  std::string Text() const { return m_text.str(); }

 private:
  std::ostringstream m_text;
  std::streambuf* m_target;
};

}  // namespace zortunedex::kit::tool
