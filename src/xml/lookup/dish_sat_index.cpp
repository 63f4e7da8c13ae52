#include "xml/lookup/dish_sat_index.h"

#include <cstdio>
#include <utility>

#include "platform/text.h"
#include "xml/elements/element_paths.h"
#include "xml/elements/xml_nodes.h"

namespace xml {

namespace {

constexpr const char* kKeyAttributes[] = {"id", "band", "LNB_Low", "LNB_High", "LNB_Switch"};
// Room of a selection path, its terminator included.
constexpr int kPathSize = 260;

struct Identity {
  std::string id;  // in the system's ANSI code page
  std::string band;
  int low = 0;
  int high = 0;
  int switchFreq = 0;
};

// Up to the first zero, as a text in a path ends there.
std::string Narrow(const Bstr& wide) { return text::ToNarrow(wide.View()).c_str(); }

// A value that the record does not tell is empty or 0.
Identity IdentityOf(IDishSatInfo* dishSat) {
  Bstr id;
  Bstr band;
  DWORD low = 0;
  DWORD high = 0;
  DWORD switchFreq = 0;
  dishSat->GetID(id.Receive());
  dishSat->GetBand(band.Receive());
  dishSat->GetLowFreq(&low);
  dishSat->GetHighFreq(&high);
  dishSat->GetSwitchFreq(&switchFreq);
  return {Narrow(id), Narrow(band), static_cast<int>(low), static_cast<int>(high),
          static_cast<int>(switchFreq)};
}

bool FitsPath(const Identity& identity) {
  const int length = std::snprintf(
      nullptr, 0, "./SAT[@id='%s'][@band='%s'][@LNB_Low='%d'][@LNB_High='%d'][@LNB_Switch='%d']",
      identity.id.c_str(), identity.band.c_str(), identity.low, identity.high, identity.switchFreq);
  return length < kPathSize && identity.id.find('\'') == std::string::npos &&
         identity.band.find('\'') == std::string::npos;
}

// No value holds a zero.
void Append(std::string& key, std::string_view value) { key.append(value).push_back('\0'); }

// As a path is compared with attributes: through the thread's ANSI code page.
std::string Utf8(const std::string& narrow) {
  return text::ToUtf8(text::FromNarrow(narrow).View());
}

std::string KeyOfIdentity(const Identity& identity) {
  std::string key;
  Append(key, Utf8(identity.id));
  Append(key, Utf8(identity.band));
  for (const int number : {identity.low, identity.high, identity.switchFreq}) {
    Append(key, std::to_string(number));
  }
  return key;
}

}  // namespace

HRESULT DishSatIndex::FindOrCreate(IDishSatInfo* dishSat, dom::Element& sat) {
  if (!Parent() || dishSat == nullptr) return E_POINTER;
  Settle([this](const dom::Element& last, bool isNew) { NoteWritten(last, isNew); });
  if (!m_built) Build();
  const Identity identity = IdentityOf(dishSat);
  if (FitsPath(identity)) {
    const auto found = m_first.find(KeyOfIdentity(identity));
    if (found != m_first.end()) {
      m_lastKey = found->first;
      HandOut(found->second, false, sat);
      return S_OK;
    }
  }
  dom::Element created;
  const HRESULT hr = AppendNew(Parent(), paths::NameOf(paths::kDishSat), created);
  if (hr != S_OK) return FAILED(hr) ? hr : E_FAIL;
  HandOut(created, true, sat);
  return S_OK;
}

std::optional<std::string> DishSatIndex::KeyOf(const dom::Element& sat) {
  std::string key;
  std::string value;
  for (const char* attribute : kKeyAttributes) {
    if (sat.GetUtf8(attribute, value) != S_OK) return std::nullopt;
    Append(key, value);
  }
  return key;
}

void DishSatIndex::Build() {
  m_first.clear();
  ForEachChild(Parent(), paths::kDishSat, [this](dom::Element sat) {
    if (std::optional<std::string> key = KeyOf(sat))
      m_first.emplace(std::move(*key), std::move(sat));
  });
  m_built = true;
}

void DishSatIndex::NoteWritten(const dom::Element& sat, bool isNew) {
  std::optional<std::string> key = KeyOf(sat);
  if (isNew) {
    if (key) m_first.emplace(std::move(*key), sat);
  } else if (key != m_lastKey) {
    // Texts outside the code page: what was found under their likeness now has another identity.
    m_built = false;
  }
}

}  // namespace xml
