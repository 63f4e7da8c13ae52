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

/// Runs what builds texts: lack of memory leaves it as the error that hosts know.
template <typename Work>
auto RaisingComError(Work work) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    throw ComError(E_OUTOFMEMORY);
  }
}

/// Where nothing may be raised through, as in a function that somebody else's code calls: what is
/// raised is kept, and raised behind that code.
class RaisedLater {
 public:
  /// False when the work raised; what it raised is kept.
  template <typename Work>
  bool Run(Work work) noexcept {
    try {
      work();
      return true;
    } catch (...) {
      m_raised = std::current_exception();
      return false;
    }
  }
  void RaiseIfAny() const {
    if (m_raised) std::rethrow_exception(m_raised);
  }

 private:
  std::exception_ptr m_raised;
};

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

/// Does its work when its own scope is left by an exception.
template <typename Work>
class [[nodiscard]] WhenRaised {
 public:
  explicit WhenRaised(Work work) : m_work(std::move(work)) {}
  WhenRaised(const WhenRaised&) = delete;
  WhenRaised& operator=(const WhenRaised&) = delete;
  ~WhenRaised() {
    if (std::uncaught_exceptions() > m_exceptions) m_work();
  }

 private:
  const int m_exceptions = std::uncaught_exceptions();
  Work m_work;
};
