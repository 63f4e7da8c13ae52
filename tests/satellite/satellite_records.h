// Every field of a record by its getter and its setter.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>
#include <vector>

#include "platform/com_ptr.h"
#include "support/expect.h"

/// Checks a field's first value, its null out-pointer, and that every value comes back and marks
/// nothing dirty.
template <typename I, typename T>
void CheckField(I* record, HRESULT (STDMETHODCALLTYPE I::*get)(T*),
                HRESULT (STDMETHODCALLTYPE I::*set)(T), std::type_identity_t<T> initial,
                const std::vector<std::type_identity_t<T>>& values,
                std::source_location where = std::source_location::current()) {
  const auto expect = [&](T expected) {
    T actual = static_cast<T>(77);
    ExpectHr(S_OK, (record->*get)(&actual), where);
    EXPECT_EQ(expected, actual) << where.line();
  };
  expect(initial);
  ExpectHr(E_POINTER, (record->*get)(nullptr), where);
  for (const T value : values) {
    ExpectHr(S_OK, (record->*set)(value), where);
    expect(value);
    ExpectHr(S_OK, (record->*set)(value), where);
    expect(value);
  }
  LONG dirty = 77;
  ExpectHr(S_OK, record->GetDirty(&dirty), where);
  EXPECT_EQ(0, dirty) << where.line();
}

/// The same for a text: byte-exact copies both ways.
template <typename I>
void CheckText(I* record, HRESULT (STDMETHODCALLTYPE I::*get)(BSTR*),
               HRESULT (STDMETHODCALLTYPE I::*set)(BSTR),
               std::source_location where = std::source_location::current()) {
  BSTR initial = reinterpret_cast<BSTR>(record);
  ExpectHr(S_OK, (record->*get)(&initial), where);
  EXPECT_EQ(nullptr, static_cast<void*>(initial)) << where.line();
  ExpectHr(E_POINTER, (record->*get)(nullptr), where);
  // A zero inside, and half a unit at the end.
  const char bytes[] = {'a', 1, 0, 0, 'b', 2, 'c'};
  const Bstr odd = Bstr::Attach(SysAllocStringByteLen(bytes, sizeof(bytes)));
  const Bstr plain = Wide("plain");
  const Bstr empty = Wide("");
  for (const Bstr* text : {&odd, &plain, &empty}) {
    const Bstr given = Bstr::Copy(text->Get());
    ExpectHr(S_OK, (record->*set)(given.Get()), where);
    if (SysStringByteLen(given.Get()) != 0) given.Get()[0] = '!';
    Bstr first;
    Bstr second;
    ExpectHr(S_OK, (record->*get)(first.Receive()), where);
    ExpectHr(S_OK, (record->*get)(second.Receive()), where);
    ASSERT_NE(nullptr, static_cast<void*>(first.Get())) << where.line();
    EXPECT_NE(static_cast<void*>(first.Get()), static_cast<void*>(second.Get())) << where.line();
    for (const Bstr* copy : {&first, &second}) {
      ASSERT_EQ(SysStringByteLen(text->Get()), SysStringByteLen(copy->Get())) << where.line();
      EXPECT_EQ(0, std::memcmp(text->Get(), copy->Get(), SysStringByteLen(copy->Get())))
          << where.line();
    }
  }
  ExpectHr(S_OK, (record->*set)(nullptr), where);
  ExpectHr(S_OK, (record->*get)(&initial), where);
  EXPECT_EQ(nullptr, static_cast<void*>(initial)) << where.line();
  LONG dirty = 77;
  ExpectHr(S_OK, record->GetDirty(&dirty), where);
  EXPECT_EQ(0, dirty) << where.line();
}

/// The flag itself, which only SetDirty changes.
template <typename I>
void CheckDirty(I* record) {
  ExpectHr(E_POINTER, record->GetDirty(nullptr));
  for (const LONG value : {1, -5, 0}) {
    ExpectHr(S_OK, record->SetDirty(value));
    LONG dirty = 77;
    ExpectHr(S_OK, record->GetDirty(&dirty));
    EXPECT_EQ(value, dirty);
  }
}
