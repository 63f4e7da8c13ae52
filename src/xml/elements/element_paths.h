// Where the elements of the four files stand: each below its parent, in one step.
#pragma once

#include "platform/dom_name.h"

namespace xml::paths {

// ChanInfo.xml
inline constexpr char kCountry[] = "./Country";
inline constexpr char kChannelSet[] = "./ChannelSet";
inline constexpr char kChannel[] = "./Channel";
inline constexpr char kElementStreams[] = "./ElementStreams";
inline constexpr char kComponents[] = "./Components";
inline constexpr char kSatelliteParams[] = "./SatelliteParams";

// PreSetChannelInfo.xml, in a channel set
inline constexpr char kArea[] = "./Area";
inline constexpr char kSubArea[] = "./SubArea";

// SatelliteInfo.xml
inline constexpr char kSatTable[] = "./SAT_TABLE";
inline constexpr char kLNBTable[] = "./LNB_TABLE";
inline constexpr char kSatellite[] = "./Satellite";
inline constexpr char kCBand[] = "./C-Band";
inline constexpr char kKuBand[] = "./Ku-Band";
inline constexpr char kTransponder[] = "./Transponder";
inline constexpr char kLNB[] = "./LNB";

// UserSettings.xml
inline constexpr char kSatSetting[] = "./SAT_SETTING";
inline constexpr const char* kDishes[] = {"./DISH_1", "./DISH_2", "./DISH_3", "./DISH_4"};
inline constexpr char kDishSat[] = "./SAT";

/// The name of the element that one of these paths leads to.
constexpr dom::Name NameOf(const char* path) { return dom::Name::Lasting(path + 2); }

}  // namespace xml::paths
