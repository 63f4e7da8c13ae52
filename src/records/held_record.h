#pragma once

#include "platform/com_ptr.h"

/// A record of a list while it is asked. One that a host implements may make its list let go of it
/// meanwhile, so it is held; our own, of class `C`, calls nobody back, and a long scan saves the
/// counting.
template <typename C, typename I>
class HeldRecord {
 public:
  HeldRecord() = default;
  explicit HeldRecord(I* record) : m_record(record), m_own(C::From(record)) {
    if (m_own == nullptr) m_reference = ComPtr<I>(record);
  }

  I* Get() const { return m_record; }
  I* operator->() const { return m_record; }
  explicit operator bool() const { return m_record != nullptr; }
  /// Null for a record that a host implements.
  C* Own() const { return m_own; }

 private:
  I* m_record = nullptr;
  C* m_own = nullptr;
  ComPtr<I> m_reference;
};
