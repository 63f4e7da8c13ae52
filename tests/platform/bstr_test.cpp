#include "platform/bstr.h"

#include <gtest/gtest.h>

#include <cstring>

#include "support/expect.h"

namespace {

/// The 32-bit byte length in front of the text.
UINT StoredLength(BSTR text) {
  UINT length = 0;
  std::memcpy(&length, reinterpret_cast<const char*>(text) - sizeof(length), sizeof(length));
  return length;
}

const char* Bytes(BSTR text) { return reinterpret_cast<const char*>(text); }

TEST(Bstr, AllocationCopiesUpToTheTerminator) {
  const Bstr text = Bstr::Attach(SysAllocString(OLESTR("abc")));
  ExpectText(OLESTR("abc"), text.Get());
  EXPECT_EQ(6U, StoredLength(text.Get()));
  EXPECT_EQ(0, text.Get()[3]);
}

TEST(Bstr, NullIsNoText) {
  EXPECT_EQ(nullptr, SysAllocString(nullptr));
  EXPECT_EQ(0U, SysStringLen(nullptr));
  EXPECT_EQ(0U, SysStringByteLen(nullptr));
  SysFreeString(nullptr);
  const Bstr none;
  EXPECT_EQ(nullptr, none.Get());
  EXPECT_TRUE(none.IsEmpty());
  EXPECT_TRUE(none.View().empty());
  EXPECT_EQ(nullptr, Bstr::Copy(nullptr).Get());
}

TEST(Bstr, EmptyTextIsNotNull) {
  const Bstr text = Bstr::Attach(SysAllocString(OLESTR("")));
  ASSERT_NE(nullptr, text.Get());
  EXPECT_EQ(0, text.Get()[0]);
  EXPECT_TRUE(text.IsEmpty());
  const Bstr fromView(WideView{});
  ASSERT_NE(nullptr, fromView.Get());
  EXPECT_EQ(0U, StoredLength(fromView.Get()));
}

TEST(Bstr, ZeroUnitsInsideCount) {
  const WideView view(OLESTR("a\0b"), 3);
  const Bstr text(view);
  EXPECT_EQ(3U, SysStringLen(text.Get()));
  EXPECT_EQ(view, text.View());
  EXPECT_EQ(view, Bstr::Copy(text.Get()).View());
}

TEST(Bstr, LengthWithoutTextGivesRoom) {
  const Bstr text = Bstr::Attach(SysAllocStringLen(nullptr, 5));
  ASSERT_NE(nullptr, text.Get());
  EXPECT_EQ(5U, SysStringLen(text.Get()));
  for (int index = 0; index < 5; ++index) text.Get()[index] = static_cast<OLECHAR>('a' + index);
  EXPECT_EQ(0, text.Get()[5]);
  ExpectText(OLESTR("abcde"), text.Get());
}

TEST(Bstr, OddByteLengthsSurviveACopy) {
  for (UINT length = 0; length < 10; ++length) {
    const Bstr odd = Bstr::Attach(SysAllocStringByteLen("123456789", length));
    EXPECT_EQ(length, SysStringByteLen(odd.Get()));
    EXPECT_EQ(length / 2, SysStringLen(odd.Get()));
    EXPECT_EQ(length / 2, odd.View().size());
    const Bstr copy = Bstr::Copy(odd.Get());
    EXPECT_NE(odd.Get(), copy.Get());
    ASSERT_EQ(length, SysStringByteLen(copy.Get()));
    EXPECT_EQ(0, std::memcmp("123456789", Bytes(copy.Get()), length));
    EXPECT_EQ(0, Bytes(copy.Get())[length]);
    EXPECT_EQ(0, Bytes(copy.Get())[length + 1]);
  }
}

TEST(Bstr, MovingLeavesOneOwner) {
  Bstr from(OLESTR("moved"));
  const BSTR text = from.Get();
  Bstr to(std::move(from));
  EXPECT_EQ(text, to.Get());
  Bstr assigned(OLESTR("old"));
  assigned = std::move(to);
  EXPECT_EQ(text, assigned.Get());
  assigned.Reset();
  EXPECT_EQ(nullptr, assigned.Get());
}

TEST(Bstr, ReleaseGivesTheTextAway) {
  Bstr text(OLESTR("given"));
  const Bstr taken = Bstr::Attach(text.Release());
  EXPECT_EQ(nullptr, text.Get());
  ExpectText(OLESTR("given"), taken.Get());
}

TEST(Bstr, ReceiveFreesWhatWasThere) {
  Bstr text(OLESTR("old"));
  BSTR* place = text.Receive();
  EXPECT_EQ(nullptr, *place);
  *place = SysAllocString(OLESTR("new"));
  ExpectText(OLESTR("new"), text.Get());
}

TEST(Bstr, TextTooLongForItsLengthRaisesOutOfMemory) {
  EXPECT_EQ(nullptr, SysAllocStringLen(nullptr, 0xFFFFFFFFU));
  try {
    const Bstr text(WideView(nullptr, 0xFFFFFFFFU));
    ADD_FAILURE() << "no error for " << text.View().size() << " units";
  } catch (const ComError& error) {
    ExpectHr(E_OUTOFMEMORY, error.Error());
  }
}

}  // namespace
