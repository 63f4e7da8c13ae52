#include "platform/com.h"

#include <gtest/gtest.h>

#include <cstring>

#include "support/expect.h"

namespace {

class Object : public IUnknown {
 public:
  virtual ~Object() = default;
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  ULONG STDMETHODCALLTYPE AddRef() override { return 71; }
  ULONG STDMETHODCALLTYPE Release() override { return 72; }
};

TEST(Com, IdentifiersHaveTheirBytesInMemoryOrder) {
  const unsigned char expected[16] = {0, 0, 0, 0, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0x46};
  EXPECT_EQ(0, std::memcmp(&IID_IUnknown, expected, sizeof(expected)));
  const GUID mixed = {0x01020304, 0x0506, 0x0708, {9, 10, 11, 12, 13, 14, 15, 16}};
  const unsigned char bytes[16] = {4, 3, 2, 1, 6, 5, 8, 7, 9, 10, 11, 12, 13, 14, 15, 16};
  EXPECT_EQ(0, std::memcmp(&mixed, bytes, sizeof(bytes)));
}

TEST(Com, IdentifiersCompareWhole) {
  GUID other = IID_IUnknown;
  EXPECT_TRUE(other == IID_IUnknown);
  other.Data4[7] = 0x47;
  EXPECT_FALSE(other == IID_IUnknown);
  EXPECT_FALSE(IID_IClassFactory == IID_IUnknown);
  EXPECT_EQ(1U, IID_IClassFactory.Data1);
  EXPECT_EQ(0x00020400U, IID_IDispatch.Data1);
}

TEST(Com, SuccessIsWhatIsNotNegative) {
  EXPECT_TRUE(SUCCEEDED(S_OK));
  EXPECT_TRUE(SUCCEEDED(S_FALSE));
  EXPECT_FALSE(SUCCEEDED(E_FAIL));
  EXPECT_TRUE(FAILED(E_NOTIMPL));
  EXPECT_FALSE(FAILED(S_FALSE));
}

TEST(Com, DestructorStaysBehindTheInterfacesMethods) {
  Object object;
  IUnknown* unknown = &object;
  using Count = ULONG(STDMETHODCALLTYPE*)(IUnknown*);
  Count* table = nullptr;
  std::memcpy(&table, static_cast<void*>(unknown), sizeof(table));
  Count count[2] = {};
  std::memcpy(count, table + 1, sizeof(count));
  EXPECT_EQ(71U, count[0](unknown));
  EXPECT_EQ(72U, count[1](unknown));
}

TEST(Com, TaskMemoryIsWritable) {
  void* memory = CoTaskMemAlloc(300);
  ASSERT_NE(nullptr, memory);
  std::memset(memory, 0xA5, 300);
  EXPECT_EQ(0xA5, static_cast<unsigned char*>(memory)[299]);
  CoTaskMemFree(memory);
  CoTaskMemFree(nullptr);
}

}  // namespace
