// Walking, changing and describing the lists of the satellite model.
#include <algorithm>

#include "support/database.h"
#include "support/fuzz.h"

namespace {

constexpr UINT kDishes = 4;

std::string Text(const Bstr& text) {
  std::string codes;
  for (const OLECHAR unit : text.View()) codes += std::to_string(unit) + ",";
  return codes + ";";
}

template <typename I>
std::string TextOf(I* record, HRESULT (I::*getter)(BSTR*)) {
  Bstr text;
  Require((record->*getter)(text.Receive()) == S_OK);
  return Text(text);
}

template <typename I, typename T>
std::string NumberOf(I* record, HRESULT (I::*getter)(T*)) {
  T value{};
  Require((record->*getter)(&value) == S_OK);
  return std::to_string(value) + ";";
}

std::string Describe(ITransponderInfo* record) {
  using I = ITransponderInfo;
  return TextOf(record, &I::GetName) + NumberOf(record, &I::GetCarrierFrequency) +
         NumberOf(record, &I::GetPolarisation) + NumberOf(record, &I::GetSymbolRate) +
         NumberOf(record, &I::GetInnerFECRate) + NumberOf(record, &I::GetModulationType) +
         NumberOf(record, &I::GetSpectralInversion) + NumberOf(record, &I::GetIndex) + "\n";
}

std::string Describe(ITransponderInfoMgr* list) {
  UINT count = 0;
  Require(list->GetTransponderCount(&count) == S_OK);
  std::string text;
  for (UINT index = 0; index < count; ++index) {
    ComPtr<ITransponderInfo> record;
    Require(list->GetTransponderInfoByIndex(index, record.Receive()) == S_OK);
    text += Describe(record.Get());
    Bstr name;
    record->GetName(name.Receive());
    BSTR taken = name.Release();
    ComPtr<ITransponderInfo> found;
    Require(list->GetTransponderInfoByName(&taken, found.Receive()) == S_OK);
  }
  return text;
}

std::string Describe(ISatelliteInfo* record) {
  using I = ISatelliteInfo;
  BOOL west = 0;
  LONG longitude = 0;
  Require(record->GetOrbitalPosition(&west, &longitude) == S_OK);
  std::string text = std::to_string(west) + ";" + std::to_string(longitude) + ";";
  text += NumberOf(record, &I::GetAzimuth) + NumberOf(record, &I::GetElevation) +
          NumberOf(record, &I::GetIndex) + TextOf(record, &I::GetName) + TextOf(record, &I::GetID) +
          NumberOf(record, &I::GetRegion) + NumberOf(record, &I::GetDivision) + "\n";
  for (const ESatFreqBand band : {SatFreqBand_CBand, SatFreqBand_KuBand}) {
    ComPtr<ITransponderInfoMgr> list;
    Require(SUCCEEDED(record->GetTransponderMgr(band, list.Receive())));
    text += Describe(list.Get());
  }
  return text;
}

std::string Describe(ISatelliteInfoMgr* list) {
  UINT count = 0;
  Require(list->GetSatCount(0, RegionUnknown, SatcoDX_Unknown, &count) == S_OK);
  std::string text;
  for (UINT index = 0; index < count; ++index) {
    ComPtr<ISatelliteInfo> record;
    Require(list->GetSatInfoByIndex(index, 0, RegionUnknown, SatcoDX_Unknown, record.Receive()) ==
            S_OK);
    text += Describe(record.Get());
    Bstr name;
    ComPtr<ISatelliteInfo> found;
    record->GetName(name.Receive());
    Require(list->GetSatInfoByName(name.Get(), found.Receive()) == S_OK);
    record->GetID(name.Receive());
    BSTR taken = name.Release();
    Require(list->GetSatInfoByID(&taken, found.Receive()) == S_OK);
  }
  return text;
}

std::string Describe(ILNBInfoMgr* list) {
  using I = ILNBInfo;
  UINT count = 0;
  Require(list->GetLNBCount(&count) == S_OK);
  std::string text;
  for (UINT index = 0; index < count; ++index) {
    ComPtr<ILNBInfo> record;
    Require(list->GetLNBInfoByIndex(index, record.Receive()) == S_OK);
    text += TextOf(record.Get(), &I::GetType) + NumberOf(record.Get(), &I::GetLowFreq) +
            NumberOf(record.Get(), &I::GetHighFreq) + NumberOf(record.Get(), &I::GetSwitchFreq);
  }
  return text;
}

ComPtr<IDishSatInfoMgr> DishesOf(const ComPtr<IZorTunedex>& database) {
  ComPtr<IDishSatInfoMgr> dishes;
  Require(SUCCEEDED(database->GetDishSatInfoMgr(dishes.Receive())));
  return dishes;
}

UINT CountOf(const ComPtr<IDishSatInfoMgr>& dishes, UINT dish) {
  UINT count = 0;
  Require(dishes->GetDishSatCount(&count, dish) == S_OK);
  return count;
}

ComPtr<IDishSatInfo> Find(const ComPtr<IDishSatInfoMgr>& dishes, UINT dish, UINT index) {
  ComPtr<IDishSatInfo> record;
  Require(dishes->GetDishSatInfoByIndex(record.Receive(), dish, index) == S_OK);
  return record;
}

void AddTo(const ComPtr<IDishSatInfoMgr>& dishes, UINT dish, UINT index) {
  ComPtr<IDishSatInfo> record;
  Require(dishes->CreateDishSatInfo(record.Receive()) == S_OK);
  record->SetID(Bstr(u"<new & \"other\">\n\u20AC").Get());
  record->SetBand(index % 2 == 0 ? Bstr(u"it's").Get() : nullptr);
  record->SetLowFreq(3000000000U + index);
  record->SetIndex(index);
  Require(dishes->AddDishSatInfo(record.Get(), dish) == S_OK);
}

}  // namespace

std::string DescribeCatalogue(const ComPtr<IZorTunedex>& database) {
  ComPtr<ISatelliteInfoMgr> satellites;
  ComPtr<ILNBInfoMgr> lnbs;
  Require(SUCCEEDED(database->GetSatelliteInfoMgr(satellites.Receive())));
  Require(SUCCEEDED(database->GetLNBInfoMgr(lnbs.Receive())));
  return Describe(satellites.Get()) + Describe(lnbs.Get());
}

void ChangeCatalogue(const ComPtr<IZorTunedex>& database) {
  ComPtr<ISatelliteInfoMgr> satellites;
  database->GetSatelliteInfoMgr(satellites.Receive());
  ComPtr<ISatelliteInfo> record;
  for (UINT number = 0; number < 3; ++number) {
    Require(satellites->CreateSatelliteInfo(record.Receive()) == S_OK);
    record->SetName(Bstr(u"other").Get());
    record->SetIndex(number * 3);
    Require(satellites->AddSatelliteInfo(record.Get()) == S_OK);
  }
  Require(satellites->RemoveSatelliteInfo(record.Get()) == S_OK);
  ComPtr<ITransponderInfoMgr> transponders;
  ComPtr<ITransponderInfo> transponder;
  Require(satellites->GetSatInfoByIndex(1, 0, RegionUnknown, SatcoDX_Unknown, record.Receive()) ==
          S_OK);
  Require(SUCCEEDED(record->GetTransponderMgr(SatFreqBand_KuBand, transponders.Receive())));
  Require(transponders->CreateTransponderInfo(transponder.Receive()) == S_OK);
  Require(transponders->AddTransponderInfo(transponder.Get()) == S_OK);
  Require(transponders->RemoveTransponderInfo(transponder.Get()) == S_OK);
  ComPtr<ILNBInfoMgr> lnbs;
  database->GetLNBInfoMgr(lnbs.Receive());
  Require(lnbs->Clear() == S_OK);
}

// Equal ones share an element in the file.
std::vector<std::string> DescribeDishes(const ComPtr<IZorTunedex>& database) {
  using I = IDishSatInfo;
  const ComPtr<IDishSatInfoMgr> dishes = DishesOf(database);
  std::vector<std::string> lines;
  for (UINT dish = 0; dish < kDishes; ++dish) {
    const UINT count = CountOf(dishes, dish);
    LONG first = 0;
    ComPtr<I> record;
    // From 0 where they were loaded, from 1 where they were numbered.
    if (dishes->GetDishSatInfoByIndex(record.Receive(), dish, 0) != S_OK) first = 1;
    for (UINT index = 0; index < count; ++index) {
      record = Find(dishes, dish, index + static_cast<UINT>(first));
      std::string line =
          std::to_string(dish) + ":" + TextOf(record.Get(), &I::GetID) +
          TextOf(record.Get(), &I::GetBand) + NumberOf(record.Get(), &I::GetLowFreq) +
          NumberOf(record.Get(), &I::GetHighFreq) + NumberOf(record.Get(), &I::GetSwitchFreq);
      if (std::find(lines.begin(), lines.end(), line) == lines.end()) lines.push_back(line);
    }
  }
  return lines;
}

// A dish that the file lacks takes nothing; dishes without assignments stay so.
void ChangeDishes(const ComPtr<IZorTunedex>& database) {
  const ComPtr<IDishSatInfoMgr> dishes = DishesOf(database);
  for (UINT dish = 0; dish < kDishes; ++dish) {
    const UINT count = CountOf(dishes, dish);
    if (count == 0) continue;
    Find(dishes, dish, 0)->SetSwitchFreq(dish);
    AddTo(dishes, dish, count);
    AddTo(dishes, dish, count / 2 + 1);
    // Numbers the dish, and takes the elements of all dishes out of the document.
    Require(dishes->RemoveDishSatInfo(Find(dishes, dish, 0).Get(), dish) == S_OK);
  }
}
