#pragma once

#include "core/interfaces.h"

/// The identifier of a record's or list's interface.
template <typename I>
struct InterfaceId;

template <>
struct InterfaceId<IChannelInfo> {
  static constexpr IID kValue = IID_IChannelInfo;
};
template <>
struct InterfaceId<IChannelInfoMgr> {
  static constexpr IID kValue = IID_IChannelInfoMgr;
};
template <>
struct InterfaceId<ISatelliteInfo> {
  static constexpr IID kValue = IID_ISatelliteInfo;
};
template <>
struct InterfaceId<ISatelliteInfoMgr> {
  static constexpr IID kValue = IID_ISatelliteInfoMgr;
};
template <>
struct InterfaceId<ITransponderInfo> {
  static constexpr IID kValue = IID_ITransponderInfo;
};
template <>
struct InterfaceId<ITransponderInfoMgr> {
  static constexpr IID kValue = IID_ITransponderInfoMgr;
};
template <>
struct InterfaceId<ILNBInfo> {
  static constexpr IID kValue = IID_ILNBInfo;
};
template <>
struct InterfaceId<ILNBInfoMgr> {
  static constexpr IID kValue = IID_ILNBInfoMgr;
};
template <>
struct InterfaceId<IDishSatInfo> {
  static constexpr IID kValue = IID_IDishSatInfo;
};
template <>
struct InterfaceId<IDishSatInfoMgr> {
  static constexpr IID kValue = IID_IDishSatInfoMgr;
};
