#include "channels/object_holder.h"

#include "channels/channel_records.h"

namespace {

using Holder = CObjectHolder<InputSignalType, IChannelInfoMgr>;

TEST(ObjectHolder, RegistersOnce) {
  Holder holder;
  UINT count = 7;
  ExpectHr(S_OK, holder.Count(&count));
  EXPECT_EQ(0u, count);
  const ComPtr<IChannelInfoMgr> first = MakeList(InputSignalUnknown);
  const ComPtr<IChannelInfoMgr> second = MakeList(InputSignalUnknown);
  ExpectHr(S_OK, holder.Register(InputSignalFMRadio, first.Get()));
  ExpectRefCount(2, first.Get());
  InputSignalType signalType = InputSignalUnknown;
  first->GetSignalType(&signalType);
  EXPECT_EQ(InputSignalFMRadio, signalType);
  ExpectHr(E_FAIL, holder.Register(InputSignalFMRadio, second.Get()));
  ExpectHr(E_FAIL, holder.Register(InputSignalAMRadio, nullptr));
  ExpectRefCount(1, second.Get());
  second->GetSignalType(&signalType);
  EXPECT_EQ(InputSignalUnknown, signalType);
  ExpectHr(S_OK, holder.Count(&count));
  EXPECT_EQ(1u, count);
  ExpectHr(E_POINTER, holder.Count(nullptr));
}

TEST(ObjectHolder, GetAddsAReference) {
  Holder holder;
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalUnknown);
  ExpectHr(S_OK, holder.Register(InputSignalFMRadio, list.Get()));
  ComPtr<IChannelInfoMgr> found;
  ExpectHr(S_OK, holder.Get(InputSignalFMRadio, found.Receive()));
  EXPECT_EQ(list.Get(), found.Get());
  ExpectRefCount(3, list.Get());
  IChannelInfoMgr* untouched = list.Get();
  ExpectHr(E_FAIL, holder.Get(InputSignalAMRadio, &untouched));
  EXPECT_EQ(list.Get(), untouched);
  ExpectHr(E_POINTER, holder.Get(InputSignalFMRadio, nullptr));
  ExpectHr(E_POINTER, holder.Get(InputSignalAMRadio, nullptr));
  holder.ReleaseAll();
  ExpectRefCount(2, list.Get());
  ExpectHr(E_FAIL, holder.Get(InputSignalFMRadio, &untouched));
}

TEST(ObjectHolder, DestructionReleases) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalUnknown);
  {
    Holder holder;
    ExpectHr(S_OK, holder.Register(InputSignalFMRadio, list.Get()));
  }
  ExpectRefCount(1, list.Get());
}

}  // namespace
