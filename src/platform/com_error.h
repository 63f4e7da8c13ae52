#pragma once

#include "platform/com.h"

/// Raised when a text cannot be allocated; carries E_OUTOFMEMORY. Interface methods do not catch
/// it: a host that wants to survive memory exhaustion catches it around its calls. A host that is
/// built with another compiler than the library, or no C++, cannot: see docs/windows.md.
class ComError {
 public:
  explicit ComError(HRESULT hr) : m_hr(hr) {}
  HRESULT Error() const { return m_hr; }

 private:
  HRESULT m_hr;
};

/// Raises lack of memory, for callers to whom no other failure matters; hands the rest back.
inline HRESULT RaiseLackOfMemory(HRESULT hr) {
  if (hr == E_OUTOFMEMORY) throw ComError(hr);
  return hr;
}
