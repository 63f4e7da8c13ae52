// The two ways in which a command ends early.
#pragma once

#include <string>

#include "platform/com.h"

/// An operation failed: exit status 1. Nothing was written unless the message says so.
struct Failure {
  HRESULT hr;
  std::string message;
};

/// The command line makes no sense: exit status 2.
struct UsageError {
  std::string message;
};

/// Name and number of a result code: "E_FAIL (0x80004005)".
std::string ResultText(HRESULT hr);

/// Raises a Failure for a failing result.
inline void Require(HRESULT hr, const std::string& message) {
  if (FAILED(hr)) throw Failure{hr, message};
}
