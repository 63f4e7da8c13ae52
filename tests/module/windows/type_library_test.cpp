// The type library in the built library says what core/interfaces.h says.
#include <array>
#include <cstddef>
#include <set>

#include "core/interfaces.h"
#include "module/header_text.h"
#include "module/loaded_library.h"
#include "module/windows/type_info.h"
#include "platform/text.h"
#include "support/expect.h"

namespace {

class TypeLibrary : public testing::Test {
 protected:
  TypeLibrary() {
    const Bstr path = text::FromUtf8(LoadedLibrary::Registered(ZORTUNEDEX_LIBRARY));
    ExpectHr(S_OK, LoadTypeLibEx(path.Get(), REGKIND_NONE, m_library.Receive()));
  }

  // The type with a name; null, and reported, when there is none.
  ComPtr<ITypeInfo> Find(const std::string& name, TYPEKIND kind) const {
    const UINT count = m_library->GetTypeInfoCount();
    for (UINT i = 0; i < count; ++i) {
      ComPtr<ITypeInfo> info;
      ExpectHr(S_OK, m_library->GetTypeInfo(i, info.Receive()));
      if (NameOf(info.Get()) == name && AttributesOf(info.Get()).typekind == kind) return info;
    }
    ADD_FAILURE() << "no type " << name;
    return {};
  }

  static std::string IdentifierOf(const GUID& identifier) {
    OLECHAR digits[40] = {};
    StringFromGUID2(identifier, digits, 40);
    return text::ToUtf8(digits);
  }

  ComPtr<ITypeLib> m_library;
  const HeaderText m_header = PublicHeader();
};

// A type library keeps one spelling of names that differ in case alone: the enumeration's.
std::string Spelling(const std::string& name) {
  return name == "polarisation" ? "Polarisation" : name;
}

void ExpectMethod(ITypeInfo* info, const FUNCDESC& function, const DeclaredMethod& declared,
                  const char* result) {
  std::array<BSTR, 16> names = {};
  UINT count = 0;
  ExpectHr(S_OK, info->GetNames(function.memid, names.data(), 16, &count));
  std::vector<std::string> found;
  for (UINT i = 0; i < count; ++i) found.push_back(text::ToUtf8(Bstr::Attach(names[i]).View()));
  ASSERT_EQ(declared.parameters.size() + 1, found.size()) << declared.name;
  EXPECT_EQ(declared.name, found[0]);
  EXPECT_EQ(result, TypeOf(info, function.elemdescFunc.tdesc)) << declared.name;
  ASSERT_EQ(static_cast<SHORT>(declared.parameters.size()), function.cParams) << declared.name;
  for (std::size_t i = 0; i < declared.parameters.size(); ++i) {
    const DeclaredParameter& parameter = declared.parameters[i];
    EXPECT_EQ(Spelling(parameter.name), found[i + 1]) << declared.name;
    EXPECT_EQ(TypeOf(parameter.type), TypeOf(info, function.lprgelemdescParam[i].tdesc))
        << declared.name << " " << parameter.name;
  }
}

}  // namespace

TEST_F(TypeLibrary, NamesItself) {
  Bstr name;
  ExpectHr(S_OK, m_library->GetDocumentation(-1, name.Receive(), nullptr, nullptr, nullptr));
  EXPECT_EQ("ZORTUNEDEXLib", text::ToUtf8(name.View()));
  TLIBATTR* attributes = nullptr;
  ExpectHr(S_OK, m_library->GetLibAttr(&attributes));
  EXPECT_EQ(m_header.identifiers.at("LIBID_ZORTUNEDEXLib"), IdentifierOf(attributes->guid));
  EXPECT_EQ(1, attributes->wMajorVerNum);
  EXPECT_EQ(0, attributes->wMinorVerNum);
  EXPECT_EQ(SYS_WIN64, attributes->syskind);
  m_library->ReleaseTLibAttr(attributes);
}

TEST_F(TypeLibrary, HoldsNothingElse) {
  std::set<std::string> expected = {"ZorTunedex"};
  for (const auto& each : m_header.interfaces) expected.insert(each.first);
  for (const auto& each : m_header.enumerations) expected.insert(each.first);
  for (const auto& each : m_header.records) expected.insert(each.first);
  std::set<std::string> found;
  const UINT count = m_library->GetTypeInfoCount();
  for (UINT i = 0; i < count; ++i) {
    ComPtr<ITypeInfo> info;
    ExpectHr(S_OK, m_library->GetTypeInfo(i, info.Receive()));
    EXPECT_TRUE(found.insert(NameOf(info.Get())).second) << NameOf(info.Get());
  }
  EXPECT_EQ(expected, found);
}

TEST_F(TypeLibrary, InterfacesHaveTheHeadersMethodsInTheirSlots) {
  EXPECT_EQ(11U, m_header.interfaces.size());
  for (const auto& [name, methods] : m_header.interfaces) {
    const ComPtr<ITypeInfo> info = Find(name, TKIND_DISPATCH);
    ASSERT_TRUE(info) << name;
    EXPECT_EQ(m_header.identifiers.at("IID_" + name), IdentifierOf(AttributesOf(info.Get()).guid));
    EXPECT_TRUE(AttributesOf(info.Get()).wTypeFlags & TYPEFLAG_FDUAL) << name;
    std::size_t index = 0;
    EachFunction(info.Get(), [&](const FUNCDESC& function) {
      // The three of IUnknown are those of the platform's own library.
      if (index >= 3 && index - 3 < methods.size()) {
        // Callers of a dispatch interface see results as exceptions.
        ExpectMethod(info.Get(), function, methods[index - 3], "void");
      }
      EXPECT_EQ(static_cast<SHORT>(index * sizeof(void*)), function.oVft) << name;
      EXPECT_EQ(INVOKE_FUNC, function.invkind) << name;
      ++index;
    });
    EXPECT_EQ(methods.size() + 3, index) << name;
  }
}

// What a compiler imports: the table of methods, derived from IUnknown.
TEST_F(TypeLibrary, InterfacesHaveTablesOfMethods) {
  for (const auto& [name, methods] : m_header.interfaces) {
    const ComPtr<ITypeInfo> info = Find(name, TKIND_DISPATCH);
    ASSERT_TRUE(info) << name;
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> table;
    ExpectHr(S_OK, info->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference));
    ExpectHr(S_OK, info->GetRefTypeInfo(reference, table.Receive()));
    const TYPEATTR attributes = AttributesOf(table.Get());
    EXPECT_EQ(TKIND_INTERFACE, attributes.typekind) << name;
    EXPECT_EQ((methods.size() + 3) * sizeof(void*), attributes.cbSizeVft) << name;
    ASSERT_EQ(methods.size(), attributes.cFuncs) << name;
    std::size_t index = 0;
    EachFunction(table.Get(), [&](const FUNCDESC& function) {
      EXPECT_EQ(static_cast<SHORT>((index + 3) * sizeof(void*)), function.oVft) << name;
      ExpectMethod(table.Get(), function, methods[index++], "HRESULT");
    });
    ComPtr<ITypeInfo> base;
    ExpectHr(S_OK, table->GetRefTypeOfImplType(0, &reference));
    ExpectHr(S_OK, table->GetRefTypeInfo(reference, base.Receive()));
    EXPECT_EQ("IUnknown", NameOf(base.Get())) << name;
  }
}

TEST_F(TypeLibrary, EnumerationsHaveTheHeadersValues) {
  EXPECT_EQ(11U, m_header.enumerations.size());
  for (const auto& [name, values] : m_header.enumerations) {
    const ComPtr<ITypeInfo> info = Find(name, TKIND_ENUM);
    ASSERT_TRUE(info) << name;
    std::vector<std::pair<std::string, std::int64_t>> found;
    EachVariable(info.Get(), [&](const VARDESC& variable) {
      ASSERT_EQ(VAR_CONST, variable.varkind) << name;
      EXPECT_EQ(VT_I4, variable.lpvarValue->vt) << name;
      found.emplace_back(NameOf(info.Get(), variable.memid), variable.lpvarValue->lVal);
    });
    EXPECT_EQ(values, found) << name;
  }
}

TEST_F(TypeLibrary, TheRecordHasTheHeadersFields) {
  ASSERT_EQ(1U, m_header.records.size());
  const auto& fields = m_header.records.at("_StationTuneInfo");
  // Where this target's compiler puts them.
  const std::size_t offsets[] = {
      offsetof(_StationTuneInfo, InputSignal),      offsetof(_StationTuneInfo, lCountry),
      offsetof(_StationTuneInfo, lPhysicalChannel), offsetof(_StationTuneInfo, dwFrequency),
      offsetof(_StationTuneInfo, lOffsetFreq),      offsetof(_StationTuneInfo, lTSID),
      offsetof(_StationTuneInfo, cbInformation),    offsetof(_StationTuneInfo, pbInformation)};
  const ComPtr<ITypeInfo> info = Find("_StationTuneInfo", TKIND_RECORD);
  ASSERT_TRUE(info);
  EXPECT_EQ(sizeof(_StationTuneInfo), AttributesOf(info.Get()).cbSizeInstance);
  ASSERT_EQ(std::size(offsets), fields.size());
  ASSERT_EQ(fields.size(), AttributesOf(info.Get()).cVars);
  std::size_t index = 0;
  EachVariable(info.Get(), [&](const VARDESC& variable) {
    EXPECT_EQ(fields[index].name, NameOf(info.Get(), variable.memid));
    EXPECT_EQ(TypeOf(fields[index].type), TypeOf(info.Get(), variable.elemdescVar.tdesc));
    EXPECT_EQ(offsets[index], variable.oInst) << fields[index].name;
    ++index;
  });
}

TEST_F(TypeLibrary, TheClassHasTheDatabaseAsItsDefault) {
  const ComPtr<ITypeInfo> info = Find("ZorTunedex", TKIND_COCLASS);
  ASSERT_TRUE(info);
  EXPECT_EQ(m_header.identifiers.at("CLSID_ZorTunedex"),
            IdentifierOf(AttributesOf(info.Get()).guid));
  Bstr documentation;
  ExpectHr(S_OK, info->GetDocumentation(MEMBERID_NIL, nullptr, documentation.Receive(), nullptr,
                                        nullptr));
  EXPECT_EQ("ZorTunedex Class", text::ToUtf8(documentation.View()));
  EXPECT_TRUE(AttributesOf(info.Get()).wTypeFlags & TYPEFLAG_FCANCREATE);
  ASSERT_EQ(1, AttributesOf(info.Get()).cImplTypes);
  INT flags = 0;
  HREFTYPE reference = 0;
  ComPtr<ITypeInfo> implemented;
  ExpectHr(S_OK, info->GetImplTypeFlags(0, &flags));
  ExpectHr(S_OK, info->GetRefTypeOfImplType(0, &reference));
  ExpectHr(S_OK, info->GetRefTypeInfo(reference, implemented.Receive()));
  EXPECT_EQ(IMPLTYPEFLAG_FDEFAULT, flags);
  EXPECT_EQ("IZorTunedex", NameOf(implemented.Get()));
}

// A type library says less than the header in one point only: BOOL and LONG are the same to it.
TEST_F(TypeLibrary, TypesOfTheHeaderAreTheseAlone) {
  const std::set<std::string> known = {"BOOL",     "BSTR", "BYTE",   "CHAR", "DWORD",
                                       "IUnknown", "LONG", "REFIID", "UINT"};
  for (const auto& [name, methods] : m_header.interfaces) {
    for (const DeclaredMethod& method : methods) {
      for (const DeclaredParameter& parameter : method.parameters) {
        std::string type = TypeOf(parameter.type);
        type.erase(std::min(type.find('*'), type.size()));
        EXPECT_TRUE(known.contains(type) || type == "GUID" || m_header.records.contains(type) ||
                    m_header.enumerations.contains(type) || m_header.interfaces.contains(type))
            << name << " " << method.name << " " << parameter.type;
      }
    }
  }
}
