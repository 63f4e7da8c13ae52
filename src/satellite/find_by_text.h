#pragma once

#include "platform/bstr.h"
#include "platform/com.h"
#include "platform/text.h"

/// The first record whose text, as one of its getters tells it, equals `text`; a record that does
/// not tell is passed over. E_FAIL when there is none.
template <typename Records, typename I>
HRESULT FindByText(const Records& records, HRESULT (STDMETHODCALLTYPE I::*getter)(BSTR*), BSTR text,
                   I** out) {
  return records.FindFirst(
      [=](I* record) {
        Bstr other;
        return SUCCEEDED((record->*getter)(other.Receive())) && text::Equal(other.Get(), text);
      },
      out);
}
