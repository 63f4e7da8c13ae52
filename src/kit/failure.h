// The two ways in which an operation ends early.
#pragma once

#include <stdexcept>
#include <string>

#include "platform/com.h"

namespace zortunedex::kit {

/// An operation failed. Nothing was written unless the message says so.
class Failure : public std::runtime_error {
 public:
  Failure(HRESULT result, const std::string& message)
      : std::runtime_error(message), m_result(result) {}

  HRESULT Result() const { return m_result; }

 private:
  HRESULT m_result;
};

/// What was asked for makes no sense, whatever the files hold: a text that is not UTF-8, an
/// attribute that a channel has not, a value that does not belong there.
class InvalidArgument : public std::invalid_argument {
  using std::invalid_argument::invalid_argument;
};

/// Name and number of a result code: "E_FAIL (0x80004005)".
std::string ResultText(HRESULT hr);

/// Raises a Failure for a failing result.
inline void Require(HRESULT hr, const std::string& message) {
  if (FAILED(hr)) throw Failure{hr, message};
}

}  // namespace zortunedex::kit
