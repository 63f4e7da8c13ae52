#include "core/keep_alive.h"

#include "support/expect.h"

namespace {

class Object : public IUnknown {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++count; }
  ULONG STDMETHODCALLTYPE Release() override { return --count; }
  ULONG count = 1;
};

TEST(KeepAlive, HoldsOneReference) {
  Object object;
  {
    const KeepAlive self(&object);
    EXPECT_EQ(2u, object.count);
    const KeepAlive again(&object);
    EXPECT_EQ(3u, object.count);
  }
  EXPECT_EQ(1u, object.count);
}

}  // namespace
