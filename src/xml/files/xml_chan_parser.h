#pragma once

#include "core/interfaces.h"
#include "xml/documents/xml_document.h"

/// ChanInfo.xml: CHANNELTABLE / Country / ChannelSet / Channel, every level sorted by its key.
class CXmlChanParser : public CXmlDocument {
 public:
  /// Loads the file; a missing or unreadable one becomes an empty table. E_FAIL without a document.
  HRESULT Load();
  /// Replaces nothing: adds the declaration and the root element to an empty document.
  HRESULT CreateNewDocument();
  /// S_FALSE while the document is clean. Drops countries without a channel set, then writes the
  /// file in the chosen form. The plain form's outcome is deliberately not reported.
  HRESULT Save();

  /// The Country element of the code, made with the country's name where it is missing.
  HRESULT FindOrCreateCountry(DWORD countryCode, dom::Element* country);
  /// Drops every Country without a ChannelSet.
  HRESULT RemoveEmptyCountries();

  /// The ChannelSet of the signal type below a country. Missing: E_FAIL, or a new one with
  /// `create`. E_POINTER for an empty country, E_FAIL for a null `set`.
  static HRESULT FindChannelSet(const dom::Element& country, InputSignalType signalType,
                                dom::Element* set, bool create);
  static HRESULT CountChannels(const dom::Element& set, LONG* count);
  /// The Channel at a 0-based position: E_POINTER for a negative one, E_FAIL past the end.
  static HRESULT GetChannelElement(const dom::Element& set, LONG position, dom::Element* channel);
  /// The Channel with the record's index, made at its sorted place where it is missing.
  static HRESULT FindOrCreateChannelElement(const dom::Element& set, IChannelInfo* channelInfo,
                                            dom::Element* channel);
  /// Empties a channel set.
  static HRESULT RemoveAllChannels(const dom::Element& set);
};
