// Getters and setters of the satellite model's records: a getter copies one field, a setter stores
// its argument unchecked. No setter marks its record dirty: a new record and one that was loaded
// are clean until their host says otherwise.
#pragma once

#include "platform/bstr.h"
#include "platform/com.h"

namespace fields {

template <typename T>
HRESULT Get(const T& field, T* out) {
  if (out == nullptr) return E_POINTER;
  *out = field;
  return S_OK;
}

/// A byte-exact copy, which the caller frees; null stays null.
inline HRESULT Get(const Bstr& field, BSTR* out) {
  if (out == nullptr) return E_POINTER;
  *out = Bstr::Copy(field.Get()).Release();
  return S_OK;
}

template <typename T>
HRESULT Set(T& field, T value) {
  field = value;
  return S_OK;
}

/// Stores a copy; null stores null.
inline HRESULT Set(Bstr& field, BSTR value) {
  field = Bstr::Copy(value);
  return S_OK;
}

}  // namespace fields
