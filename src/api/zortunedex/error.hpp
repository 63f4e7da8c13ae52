// What goes wrong in the friendly interface.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "platform/com.h"
#include "platform/com_error.h"

namespace zortunedex {

/// Raised by everything in this namespace that cannot do what it was asked for. Its text says what
/// was to be done, where, why it was not, and with which result.
class error : public std::runtime_error {
 public:
  /// Every text is UTF-8. `operation` is what cannot be done ("open"), `where` to what: a
  /// directory, a file or a channel of it.
  error(HRESULT result, std::string operation, std::string where, std::string reason)
      : std::runtime_error("cannot " + operation + ' ' + where + ": " + reason + " (result " +
                           Digits(result) + ')'),
        m_result(result),
        m_parts(std::make_shared<const Parts>(
            Parts{std::move(operation), std::move(where), std::move(reason)})) {}

  /// The result code, negative; that of the library where it gave one.
  HRESULT result() const noexcept { return m_result; }
  /// What was to be done.
  const std::string& operation() const noexcept { return m_parts->operation; }
  /// With which directory, file or channel.
  const std::string& where() const noexcept { return m_parts->where; }
  /// Why that was not possible.
  const std::string& reason() const noexcept { return m_parts->reason; }

 private:
  struct Parts {
    std::string operation;
    std::string where;
    std::string reason;
  };

  static std::string Digits(HRESULT result) {
    char text[16];
    std::snprintf(text, sizeof(text), "%08X", static_cast<unsigned>(result));
    return text;
  }

  HRESULT m_result;
  std::shared_ptr<const Parts> m_parts;  // exceptions are copied without raising
};

namespace detail {

/// Raises an error for a failing result.
inline void Require(HRESULT result, const char* operation, const std::string& where,
                    const char* reason) {
  if (FAILED(result)) throw error(result, operation, where, reason);
}

/// Runs what the library may leave for lack of memory, and makes an error of that.
template <typename Work>
decltype(auto) Guarded(const char* operation, const std::string& where, Work&& work) {
  try {
    return std::forward<Work>(work)();
  } catch (const ComError& raised) {
    throw error(raised.Error(), operation, where, "no memory is left");
  }
}

}  // namespace detail
}  // namespace zortunedex
