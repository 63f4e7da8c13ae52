// A data directory for the tests of the header for C++.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>

#include "api/zortunedex.hpp"
#include "support/temp_dir.h"

/// A copy of the samples, or of nothing, below a directory with a name that is not ASCII, but
/// in the code pages that the tests run in.
class ApiHome {
 public:
  explicit ApiHome(bool withSamples = true) {
    std::filesystem::create_directory(Path());
    if (!withSamples) return;
    for (const auto& entry : std::filesystem::directory_iterator(ZORTUNEDEX_SAMPLES "/home")) {
      std::filesystem::copy_file(entry.path(), Path() / entry.path().filename());
    }
  }

  std::filesystem::path Path() const { return std::filesystem::path(m_base.Path()) / u8"§ 8"; }
  std::string Read(const char* name) const {
    std::ifstream file(Path() / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }
  void Write(const char* name, const std::string& bytes) const {
    std::ofstream file(Path() / name, std::ios::binary);
    file << bytes;
  }
  bool Has(const char* name) const { return std::filesystem::exists(Path() / name); }

  zortunedex::database Open(std::uint32_t country, zortunedex::signal kind) const {
    return m_library.open(Path(), country, kind);
  }
  zortunedex::database Satellite() const { return Open(49, zortunedex::signal::dvb_satellite); }
  zortunedex::database OneSeg() const { return Open(81, zortunedex::signal::isdb_one_seg); }

 private:
  TempDir m_base;
  zortunedex::library m_library;
};

/// False in a code page in which the Japanese names of the samples, which are UTF-8, are no text:
/// such names do not come back.
inline bool HoldsJapaneseNames(const ApiHome& home) {
  const zortunedex::channel read = home.OneSeg().channels().at_index(1);
  zortunedex::channel again = read;
  try {
    again.set_name(read.name());
  } catch (const zortunedex::error&) {
    return false;
  }
  return zortunedex::detail::Inside::Of(again).block == zortunedex::detail::Inside::Of(read).block;
}

/// Expects an error whose reason holds the text, and answers it.
inline zortunedex::error ExpectError(const std::string& reason, const std::function<void()>& work) {
  try {
    work();
  } catch (const zortunedex::error& raised) {
    EXPECT_NE(std::string::npos, raised.reason().find(reason)) << raised.what();
    EXPECT_TRUE(FAILED(raised.result())) << raised.what();
    return raised;
  }
  ADD_FAILURE() << "nothing was raised instead of: " << reason;
  return {E_FAIL, "", "", ""};
}

/// Where the samples have channels.
struct SampleSet {
  std::uint32_t country;
  zortunedex::signal kind;
};
inline constexpr SampleSet kSampleSets[] = {
    {1, zortunedex::signal::atsc_antenna},   {1, zortunedex::signal::atsc_cable},
    {49, zortunedex::signal::dvb_satellite}, {49, zortunedex::signal::dvb_terrestrial},
    {49, zortunedex::signal::fm_radio},      {49, zortunedex::signal::analog_cable},
    {81, zortunedex::signal::isdb_one_seg},  {82, zortunedex::signal::tdmb},
    {358, zortunedex::signal::dvb_handheld},
};
