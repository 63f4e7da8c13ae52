#pragma once

#include "core/interfaces.h"
#include "platform/com_ptr.h"
#include "xml/documents/xml_document.h"

/// PreSetChannelInfo.xml: the one-segment presets by area and sub-area, and in the last area the
/// user's own ("customer") lists. Areas and sub-areas are addressed by their "AreaIndex" and
/// "SubAreaIndex", never by place. Country 81 and signal type 176 are fixed, whatever the database
/// was opened for. A file that lacks their channel set, or any document element, is answered E_FAIL
/// unless said otherwise.
class CXmlPreSetChannelParser : public CXmlDocument {
 public:
  /// Makes a record of the signal type from an element; raises lack of memory.
  using ChannelReader = HRESULT (*)(const dom::Element& element, InputSignalType signalType,
                                    ComPtr<IChannelInfo>& record);

  /// S_OK, or S_FALSE (the document's failure) for a missing or unreadable file: the document is
  /// then empty, and stays so. E_FAIL without a document.
  HRESULT Load() { return LoadOrEmpty(); }

  /// The channel set of the presets; S_OK with an empty element when the file lacks it.
  HRESULT GetPresetChannelSet(dom::Element* set) const;

  /// A null pointer is answered E_INVALIDARG by these four. The counts are 0 on failure.
  HRESULT GetAreaCount(LONG* plArea) const;
  HRESULT GetSubAreaCount(LONG lArea, LONG* plSubArea) const;
  /// The name in the ANSI code page, cut to 259 bytes on a character boundary. E_POINTER where
  /// there is none with that number; S_FALSE, and the buffer untouched, where it has no name.
  HRESULT GetAreaNameByIndex(LONG lArea, CHAR* pArea) const;
  HRESULT GetSubAreaNameByIndex(LONG lArea, LONG lSubArea, CHAR* pSubArea) const;

  /// Remembers the selection and writes it into the document, not into the file. E_POINTER for a
  /// file without the set.
  HRESULT SetArea(LONG lArea, LONG lSubArea);
  /// The document's selection, else the remembered one; of both the low 16 bits, which are what is
  /// remembered from then on. Always S_OK but for a null pointer (E_INVALIDARG).
  HRESULT GetArea(LONG* plArea, LONG* plSubArea);
  /// A sub-area; S_OK with an empty element when there is none.
  HRESULT GetSubArea(LONG lArea, LONG lSubArea, dom::Element* subArea) const;
  /// The sub-area of the remembered selection, in the same way.
  HRESULT GetSelectedSubArea(dom::Element* subArea) const;

  /// Copies the one-segment channels of a Country element of the channel file into the customer
  /// list `lIndex`, names the list and saves the file; the save's outcome is not told. Channels of
  /// the list are replaced by their index, others stay. A list that is not there is appended with
  /// the next free number, whatever `lIndex` says: E_FAIL unless the two are equal, and the new
  /// list then stays in the document. E_INVALIDARG for an empty source or a null name.
  /// `read` makes the records that carry the channels over; what it does not make is left out.
  HRESULT SaveCustomerChannelList(const dom::Element& source, LONG lIndex, const CHAR* szSubArea,
                                  ChannelReader read);
  /// Removes a customer list, numbers the rest 0, 1, 2, ... and answers what saving the file does.
  /// S_FALSE, and nothing happens, where there is no such list.
  HRESULT DeleteCustomerChannelList(LONG lIndex);

 private:
  /// As GetPresetChannelSet, E_FAIL when the file lacks it.
  HRESULT RequirePresetChannelSet(dom::Element& set) const;
  /// S_FALSE and an empty element where there is none.
  HRESULT SelectArea(LONG lArea, dom::Element& area) const;
  HRESULT SelectSubArea(LONG lArea, LONG lSubArea, dom::Element& subArea) const;
  HRESULT GetCustomerArea(LONG& lArea, dom::Element& area) const;
  /// Finds or appends the customer list and names it.
  HRESULT PrepareCustomerList(LONG lIndex, const CHAR* szSubArea, dom::Element& list) const;

  LONG m_area = 0;
  LONG m_subArea = 0;
};
