// How the lists of the satellite model are filled from elements.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "platform/com_error.h"
#include "platform/dom.h"
#include "records/record_list.h"
#include "xml/codecs/direction.h"
#include "xml/elements/xml_nodes.h"

/// Adds a record for every element. `loadRecord(element, position, loaded)` appends it to `loaded`,
/// or nothing when it fails: that element is left out. What is in the list stays. The result is
/// that of the last element; none where there is no element. Lack of memory is raised, and nothing
/// is added then: a part of the records must not pass for all of them.
template <typename List, typename LoadRecord>
std::optional<HRESULT> LoadElements(const dom::ElementList& elements, List& records,
                                    LoadRecord loadRecord) {
  std::optional<HRESULT> last;
  std::vector<typename List::Loaded> loaded;
  loaded.reserve(static_cast<std::size_t>(elements.Count()));
  for (LONG position = 0; position < elements.Count(); ++position) {
    dom::Element element;
    last = xml::GetChild(elements, position, &element);
    if (last == S_OK) last = RaiseLackOfMemory(loadRecord(element, position, loaded));
  }
  records.AddLoaded(loaded);
  return last;
}

/// Reads a new record. Its position is its index before it is added, so the order of the file is
/// that of the list.
template <typename I, typename Loaded>
HRESULT LoadInFileOrder(const ComPtr<I>& record,
                        HRESULT (*codec)(const dom::Element&, I*, xml::Direction),
                        const dom::Element& element, LONG position, std::vector<Loaded>& loaded) {
  const HRESULT hr = codec(element, record.Get(), xml::Direction::Read);
  if (FAILED(hr)) return hr;
  const UINT index = static_cast<UINT>(position);
  record->SetIndex(index);
  loaded.push_back({record, index, index});
  return S_OK;
}
