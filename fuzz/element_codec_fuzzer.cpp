// The channel codecs from any element to a block and back. The first byte chooses the signal type,
// the rest is the element as XML.
#include "support/codec.h"
#include "support/fuzz.h"

void Fuzz(const BYTE* data, std::size_t size) {
  if (size == 0) return;
  const InputSignalType signalType = BlockType(data[0]);
  const Scratch& scratch = Scratch::Emptied();
  scratch.Write("element.xml", {reinterpret_cast<const char*>(data) + 1, size - 1});
  dom::Document document;
  bool success = false;
  Require(document.Create() == S_OK);
  Require(document.Load(scratch.File("element.xml"), success) == (success ? S_OK : S_FALSE));
  dom::Element element;
  if (document.DocumentElement(element) != S_OK) return;
  const ComPtr<IChannelInfo> channel = ReadElement(element, signalType);
  if (!HasIndex(channel.Get())) return;
  RequireStable(channel.Get(), signalType);
  RequireSavedIsLoaded(scratch, WriteElement(channel.Get()));
  RequireSavedIsLoaded(scratch, document);
}
