// References on the element that a list holds; other platforms' nodes are not counted so plainly.
//
// Linux only: about the document tree that only Linux has
#include "channels/channel_records.h"
#include "channels/channel_set.h"

namespace {

TEST(HeldElement, OneReferenceAtMost) {
  ChannelSet set;
  ChannelSet other;
  set.Add(1);
  const ULONG before = [&] {
    set.Node()->AddRef();
    return set.Node()->Release();
  }();
  ComPtr<IChannelInfoMgr> list = MakeList(InputSignalFMRadio);
  ExpectHr(S_OK, list->Save(dom::kIidNode, set.Node()));
  ExpectRefCount(before, set.Node());
  ExpectHr(S_OK, list->Load(dom::kIidNode, set.Node()));
  ExpectRefCount(before + 1, set.Node());
  ExpectHr(S_OK, list->Load(dom::kIidNode, set.Node()));
  ExpectRefCount(before + 1, set.Node());
  ExpectHr(S_OK, list->Load(dom::kIidNode, other.Node()));
  ExpectRefCount(before, set.Node());
  ExpectRefCount(before + 1, other.Node());
  ExpectHr(S_OK, list->Clear());
  ExpectRefCount(before + 1, other.Node());
  ExpectHr(S_OK, list->Close());
  ExpectRefCount(before, other.Node());
  ExpectHr(S_OK, list->Load(dom::kIidNode, set.Node()));
  list.Reset();
  ExpectRefCount(before, set.Node());
}

}  // namespace
