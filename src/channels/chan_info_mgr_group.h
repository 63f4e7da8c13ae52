#pragma once

#include "channels/object_holder.h"
#include "core/interfaces.h"
#include "platform/dom.h"

/// The channel lists, one for each signal type that has one. Their order is fixed: it is the order
/// of positions and of saving. Lack of memory is raised, where other failures are not told, too.
class CChanInfoMgrGroup {
 public:
  CChanInfoMgrGroup() = default;
  CChanInfoMgrGroup(const CChanInfoMgrGroup&) = delete;
  CChanInfoMgrGroup& operator=(const CChanInfoMgrGroup&) = delete;
  virtual ~CChanInfoMgrGroup();

  /// Makes the lists that are missing; the others stay.
  HRESULT CreateAll();
  /// Empties every list, detaches it from its element and lets go of it.
  HRESULT DestroyAll();

  HRESULT Count(UINT* count) const { return m_lists.Count(count); }
  /// E_FAIL for a signal type without a list.
  HRESULT Get(InputSignalType signalType, IChannelInfoMgr** list) const {
    return m_lists.Get(signalType, list);
  }
  /// E_INVALIDARG for a position of 14 or more.
  HRESULT GetByPosition(UINT position, IChannelInfoMgr** list) const;

  /// Loads the list of the signal type from its set below a country. A missing set or list is
  /// nothing to load, and no failure is reported.
  HRESULT LoadOne(const dom::Element& country, InputSignalType signalType);
  /// Puts the channels of a set in place of those of a list, which is then dirty. A set that is
  /// none empties the list. E_FAIL for a signal type without a list.
  HRESULT Reload(InputSignalType signalType, const dom::Element& set);
  /// Saves every dirty list into its set below a country, made where it is missing. E_FAIL when no
  /// list was saved: nothing is to be written then.
  HRESULT SaveAll(const dom::Element& country);

 private:
  bool SaveIfDirty(UINT position, const dom::Element& country);

  CObjectHolder<InputSignalType, IChannelInfoMgr> m_lists;
};
