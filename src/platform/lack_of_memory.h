// Lack of memory is one thing inside the library, an exception (std::bad_alloc, or ComError where
// texts are built), and one thing outside, E_OUTOFMEMORY: AnsweringLackOfMemory stands between.
#pragma once

#include <exception>
#include <new>
#include <tuple>
#include <utility>

#include "platform/com_error.h"

/// Runs the work of a method or an entry point that answers lack of memory.
template <typename Work>
HRESULT AnsweringLackOfMemory(Work work) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (const ComError& error) {
    return error.Error();
  }
}

/// Puts the parts of an object back to what they were when its own scope is left by an exception.
/// Copying the parts may raise, assigning them must not.
template <typename... Parts>
class [[nodiscard]] PutBack {
 public:
  explicit PutBack(Parts&... parts) : m_parts(parts...), m_before(parts...) {}
  PutBack(const PutBack&) = delete;
  PutBack& operator=(const PutBack&) = delete;
  ~PutBack() {
    if (std::uncaught_exceptions() > m_exceptions) m_parts = std::move(m_before);
  }

 private:
  const int m_exceptions = std::uncaught_exceptions();
  std::tuple<Parts&...> m_parts;
  std::tuple<Parts...> m_before;
};
