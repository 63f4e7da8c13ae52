// The IDL declares what core/interfaces.h declares. Both are read as texts, so this needs no
// compiler of IDL; that the type library in the library is made of that IDL is tested where there
// is one.
#include "module/interface_outline.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <type_traits>

#include "platform/com.h"

namespace {

const std::string kIdl = "module/ZorTunedex.idl";

struct Alteration {
  const char* what;
  std::string from;  // stands once in the text
  std::string to;
  std::vector<std::string> differences;
};

struct BasicType {
  std::string name;
  std::size_t size;
  bool isSigned;
};

template <typename T>
BasicType BasicTypeOf(const char* name) {
  return {name, sizeof(T), std::is_signed_v<T>};
}

std::string Altered(std::string text, const Alteration& alteration) {
  const std::size_t at = text.find(alteration.from);
  if (at == text.npos || text.find(alteration.from, at + 1) != text.npos) {
    throw std::runtime_error("not once in the text: " + alteration.from);
  }
  return text.replace(at, alteration.from.size(), alteration.to);
}

void ExpectFoundInIdl(const std::vector<Alteration>& alterations) {
  const Outline header = OutlineOf(PublicHeader());
  const std::string idl = SourceText(kIdl);
  for (const Alteration& alteration : alterations) {
    EXPECT_EQ(alteration.differences, Differences(OutlineOfIdl(Altered(idl, alteration)), header))
        << alteration.what;
  }
}

void ExpectFoundInHeader(const std::vector<Alteration>& alterations) {
  const Outline idl = OutlineOfIdl(SourceText(kIdl));
  const std::string header = PublicHeaderText();
  for (const Alteration& alteration : alterations) {
    EXPECT_EQ(alteration.differences,
              Differences(idl, OutlineOf(HeaderText(Altered(header, alteration)))))
        << alteration.what;
  }
}

}  // namespace

TEST(InterfaceOutline, IdlAndHeaderDeclareTheSame) {
  const Outline idl = OutlineOfIdl(SourceText(kIdl));
  EXPECT_EQ(std::vector<std::string>(), Differences(idl, OutlineOf(PublicHeader())));
  // Eleven interfaces, eleven enumerations, the record and the library.
  EXPECT_EQ(24U, idl.size());
  EXPECT_EQ(27U, idl.at("interface IChannelInfo").size());
  EXPECT_EQ(25U, idl.at("interface IZorTunedex").size());
  EXPECT_EQ(8U, idl.at("struct _StationTuneInfo").size());
  EXPECT_EQ("[id(17)] HRESULT GetAreaNameByIndex([in] LONG lArea, [out] CHAR* pArea)",
            idl.at("interface IZorTunedex")[17]);
}

TEST(InterfaceOutline, MethodsOfTheIdlThatDiffer) {
  ExpectFoundInIdl({
      {"a method is missing",
       "  [id(12)] HRESULT SetChannelDspName([in] BSTR bstrName);\n",
       "",
       {"interface IChannelInfo: IDL: [id(13)] HRESULT GetChannelFreq([out] DWORD* pdwFreq); "
        "header: [id(12)] HRESULT SetChannelDspName([in] BSTR bstrName)"}},
      {"the last method is missing",
       "  [id(26)] HRESULT GetMhp([out] BOOL* pbHasmhp);\n",
       "",
       {"interface IChannelInfo: IDL: nothing; header: [id(26)] HRESULT GetMhp([out] BOOL* "
        "pbHasmhp)"}},
      {"there is one more",
       "  [id(26)] HRESULT GetMhp([out] BOOL* pbHasmhp);\n",
       "  [id(26)] HRESULT GetMhp([out] BOOL* pbHasmhp);\n  [id(27)] HRESULT Play();\n",
       {"interface IChannelInfo: IDL: [id(27)] HRESULT Play(); header: nothing"}},
      {"two are swapped",
       "  [id(5)] HRESULT GetChannelNo([out] UINT* pnChannelNo);\n"
       "  [id(6)] HRESULT SetChannelNo([in] UINT nChannelNo);\n",
       "  [id(6)] HRESULT SetChannelNo([in] UINT nChannelNo);\n"
       "  [id(5)] HRESULT GetChannelNo([out] UINT* pnChannelNo);\n",
       {"interface IChannelInfo: IDL: [id(6)] HRESULT SetChannelNo([in] UINT nChannelNo); header: "
        "[id(5)] HRESULT GetChannelNo([out] UINT* pnChannelNo)"}},
      {"two are swapped, their numbers are not",
       "  [id(4)] HRESULT LoadChannelFromFile();\n  [id(5)] HRESULT SaveChannelToFile();\n",
       "  [id(4)] HRESULT SaveChannelToFile();\n  [id(5)] HRESULT LoadChannelFromFile();\n",
       {"interface IZorTunedex: IDL: [id(4)] HRESULT SaveChannelToFile(); header: [id(4)] HRESULT "
        "LoadChannelFromFile()"}},
      {"another result",
       "HRESULT LoadChannelFromFile()",
       "void LoadChannelFromFile()",
       {"interface IZorTunedex: IDL: [id(4)] void LoadChannelFromFile(); header: [id(4)] HRESULT "
        "LoadChannelFromFile()"}},
  });
}

TEST(InterfaceOutline, ParametersOfTheIdlThatDiffer) {
  const std::string position = "interface ISatelliteInfo: IDL: [id(2)] HRESULT SetOrbitalPosition(";
  const std::string positionInHeader =
      "); header: [id(2)] HRESULT SetOrbitalPosition([in] BOOL WestLongitude, [in] LONG Longitude)";
  const std::string number = "interface IChannelInfo: IDL: [id(5)] HRESULT GetChannelNo(";
  const std::string numberInHeader =
      "); header: [id(5)] HRESULT GetChannelNo([out] UINT* pnChannelNo)";
  ExpectFoundInIdl({
      {"a type of the same size",
       "[in] BOOL WestLongitude",
       "[in] LONG WestLongitude",
       {position + "[in] LONG WestLongitude, [in] LONG Longitude" + positionInHeader}},
      {"one more pointer",
       "[out] UINT* pnChannelNo",
       "[out] UINT** pnChannelNo",
       {number + "[out] UINT** pnChannelNo" + numberInHeader}},
      {"no pointer",
       "[out] UINT* pnChannelNo",
       "[out] UINT pnChannelNo",
       {number + "[out] UINT pnChannelNo" + numberInHeader}},
      {"the other direction",
       "[out] UINT* pnChannelNo",
       "[in] UINT* pnChannelNo",
       {number + "[in] UINT* pnChannelNo" + numberInHeader}},
      {"both directions",
       "[out] UINT* pnChannelNo",
       "[in, out] UINT* pnChannelNo",
       {number + "[in, out] UINT* pnChannelNo" + numberInHeader}},
      {"no direction",
       "[out] UINT* pnChannelNo",
       "UINT* pnChannelNo",
       {number + " UINT* pnChannelNo" + numberInHeader}},
      {"another name",
       "[out] UINT* pnChannelNo",
       "[out] UINT* pnChannel",
       {number + "[out] UINT* pnChannel" + numberInHeader}},
      {"two are swapped",
       "[in] BOOL WestLongitude, [in] LONG Longitude",
       "[in] LONG Longitude, [in] BOOL WestLongitude",
       {position + "[in] LONG Longitude, [in] BOOL WestLongitude" + positionInHeader}},
      {"one is missing",
       "[in] BOOL WestLongitude, [in] LONG Longitude",
       "[in] BOOL WestLongitude",
       {position + "[in] BOOL WestLongitude" + positionInHeader}},
      {"what must not be written may be",
       "[in] const CHAR* szSubArea",
       "[in] CHAR* szSubArea",
       {"interface IZorTunedex: IDL: [id(22)] HRESULT SaveCustomerChannelList([in] LONG lIndex, "
        "[in] CHAR* szSubArea); header: [id(22)] HRESULT SaveCustomerChannelList([in] LONG lIndex, "
        "[in] const CHAR* szSubArea)"}},
  });
}

// Names that both know stand for the same numbers: those of the platform's IDL for compilers that
// come without it.
TEST(InterfaceOutline, BasicTypesOfTheIdlAreThoseOfTheHeader) {
  const std::string types = SourceText("module/ole2.idl");
  const std::map<std::string, BasicType> meanings = {
      {"char", BasicTypeOf<char>("")},
      {"unsigned char", BasicTypeOf<std::uint8_t>("")},
      {"long", BasicTypeOf<std::int32_t>("")},
      {"unsigned long", BasicTypeOf<std::uint32_t>("")},
      {"unsigned int", BasicTypeOf<std::uint32_t>("")},
      {"wchar_t", BasicTypeOf<std::uint16_t>("")},
      {"OLECHAR*", BasicTypeOf<OLECHAR*>("")},
  };
  for (const BasicType& type :
       {BasicTypeOf<BYTE>("BYTE"), BasicTypeOf<CHAR>("CHAR"), BasicTypeOf<LONG>("LONG"),
        BasicTypeOf<BOOL>("BOOL"), BasicTypeOf<UINT>("UINT"), BasicTypeOf<DWORD>("DWORD"),
        BasicTypeOf<HRESULT>("HRESULT"), BasicTypeOf<OLECHAR>("OLECHAR"),
        BasicTypeOf<BSTR>("BSTR")}) {
    const std::size_t end = types.find(" " + type.name + ";\n");
    ASSERT_NE(types.npos, end) << type.name;
    const std::size_t first = types.rfind("typedef ", end) + 8;
    const auto meaning = meanings.find(types.substr(first, end - first));
    ASSERT_NE(meanings.end(), meaning) << type.name;
    EXPECT_EQ(meaning->second.size, type.size) << type.name;
    EXPECT_EQ(meaning->second.isSigned, type.isSigned) << type.name;
  }
}

// The header tells directions in words: what the types cannot say is held all the same.
TEST(InterfaceOutline, DirectionsOfTheIdlThatDiffer) {
  const Outline header = OutlineOf(PublicHeader());
  for (const char* given :
       {"SetStationInfo([in] _StationTuneInfo* pStationInfo)",
        "GetChannelInfoByStation([in] _StationTuneInfo* pStationInfo",
        "GetTransponderInfoByName([in] BSTR* pName", "GetSatInfoByID([in] BSTR* pID",
        "AddChannelInfo([in] IChannelInfo* pChannelInfo)", "SetChannelNo([in] UINT nChannelNo)"}) {
    std::string altered = given;
    altered.replace(altered.find("[in]"), 4, "[out]");
    const std::string idl = Altered(SourceText(kIdl), {"", given, altered, {}});
    EXPECT_EQ(1U, Differences(OutlineOfIdl(idl), header).size()) << given;
  }
}

TEST(InterfaceOutline, TypesOfTheIdlThatDiffer) {
  ExpectFoundInIdl({
      {"another value",
       "InputSignalAMRadio = 6",
       "InputSignalAMRadio = 7",
       {"enum InputSignalType: IDL: InputSignalAMRadio = 7; header: InputSignalAMRadio = 6"}},
      {"another sign",
       "ServiceOthers = -268435456",
       "ServiceOthers = 268435456",
       {"enum EServiceType: IDL: ServiceOthers = 268435456; header: ServiceOthers = -268435456"}},
      {"another name of a value",
       "SortTpByFrequency = 4",
       "SortByFrequency = 4",
       {"enum ESortType: IDL: SortByFrequency = 4; header: SortTpByFrequency = 4"}},
      {"a value is missing",
       "  SatFreqBand_KuBand = 2,\n",
       "",
       {"enum ESatFreqBand: IDL: SatFreqBand_KaBand = 4; header: SatFreqBand_KuBand = 2"}},
      {"sixteen bits",
       "typedef [v1_enum] enum ESortType",
       "typedef enum ESortType",
       {"enum ESortType: IDL: SortNone = 0; header: [v1_enum]"}},
      {"another type of a field",
       "  DWORD dwFrequency;",
       "  LONG dwFrequency;",
       {"struct _StationTuneInfo: IDL: LONG dwFrequency; header: DWORD dwFrequency"}},
      {"a pointer that is a number",
       "  BYTE* pbInformation;",
       "  BYTE pbInformation;",
       {"struct _StationTuneInfo: IDL: BYTE pbInformation; header: BYTE* pbInformation"}},
      {"another name of a field",
       "  LONG lTSID;",
       "  LONG lTsid;",
       {"struct _StationTuneInfo: IDL: LONG lTsid; header: LONG lTSID"}},
      {"a field is missing",
       "  LONG lOffsetFreq;\n",
       "",
       {"struct _StationTuneInfo: IDL: LONG lTSID; header: LONG lOffsetFreq"}},
      {"two fields are swapped",
       "  LONG lOffsetFreq;\n  LONG lTSID;\n",
       "  LONG lTSID;\n  LONG lOffsetFreq;\n",
       {"struct _StationTuneInfo: IDL: LONG lTSID; header: LONG lOffsetFreq"}},
  });
}

TEST(InterfaceOutline, IdentifiersOfTheIdlThatDiffer) {
  const auto line = [](const std::string& digits, const std::string& base) {
    return "[dual, object, oleautomation, pointer_default(unique), uuid(" + digits +
           "-A7A1-4D86-9A60-CE71D8327150)] : " + base;
  };
  const std::string header = "; header: " + line("AC27B5D0", "IUnknown");
  ExpectFoundInIdl({
      {"of an interface",
       "AC27B5D0-A7A1",
       "AC27B5D1-A7A1",
       {"interface ILNBInfo: IDL: " + line("AC27B5D1", "IUnknown") + header}},
      {"another base",
       "interface ILNBInfo : IUnknown",
       "interface ILNBInfo : IDispatch",
       {"interface ILNBInfo: IDL: " + line("AC27B5D0", "IDispatch") + header}},
      {"of the library",
       "B63ADC9E-1200",
       "B63ADC9E-1201",
       {"library ZORTUNEDEXLib: IDL: [helpstring(\"ZorTunedex 1.0 Type Library\"), "
        "uuid(B63ADC9E-1201-4E8C-95F7-BC44EB0CDD14), version(1.0)]; header: "
        "[helpstring(\"ZorTunedex 1.0 Type Library\"), "
        "uuid(B63ADC9E-1200-4E8C-95F7-BC44EB0CDD14), version(1.0)]"}},
      {"of the class",
       "D4FDC473-B225",
       "D4FDC474-B225",
       {"library ZORTUNEDEXLib: IDL: [helpstring(\"ZorTunedex Class\"), "
        "uuid(D4FDC474-B225-4746-9983-065F8F21D798)] coclass ZorTunedex: [default] interface "
        "IZorTunedex; header: [helpstring(\"ZorTunedex Class\"), "
        "uuid(D4FDC473-B225-4746-9983-065F8F21D798)] coclass ZorTunedex: [default] interface "
        "IZorTunedex"}},
  });
}

TEST(InterfaceOutline, InterfacesThatTheIdlLacks) {
  const std::string idl = SourceText(kIdl);
  const std::size_t first = idl.find("[uuid(AC27B5D0-");
  const std::size_t last = idl.find("[uuid(303C56DC-");
  ASSERT_LT(first, last);
  ASSERT_NE(idl.npos, last);
  ExpectFoundInIdl({
      {"the whole of it",
       idl.substr(first, last - first),
       "",
       {"interface ILNBInfo is not in the IDL"}},
      {"its place in the library",
       "  interface ILNBInfo;\n",
       "",
       {"library ZORTUNEDEXLib: IDL: interface ILNBInfoMgr; header: interface ILNBInfo"}},
      {"its name",
       "interface IDishSatInfo : IUnknown",
       "interface IDishInfo : IUnknown",
       {"interface IDishSatInfo is not in the IDL", "interface IDishInfo is not in the header"}},
  });
}

TEST(InterfaceOutline, TheHeaderThatDiffers) {
  const std::string fixed = "  virtual HRESULT STDMETHODCALLTYPE ";
  ExpectFoundInHeader({
      {"a method is missing",
       fixed + "GetMhp(BOOL* pbHasmhp) = 0;\n",
       "",
       {"interface IChannelInfo: IDL: [id(26)] HRESULT GetMhp([out] BOOL* pbHasmhp); header: "
        "nothing"}},
      {"another type of a parameter",
       "GetMhp(BOOL* pbHasmhp)",
       "GetMhp(LONG* pbHasmhp)",
       {"interface IChannelInfo: IDL: [id(26)] HRESULT GetMhp([out] BOOL* pbHasmhp); header: "
        "[id(26)] HRESULT GetMhp([out] LONG* pbHasmhp)"}},
      {"another value",
       "SatFreqBand_KaBand = 4",
       "SatFreqBand_KaBand = 3",
       {"enum ESatFreqBand: IDL: SatFreqBand_KaBand = 4; header: SatFreqBand_KaBand = 3"}},
      {"another field",
       "  LONG lCountry;",
       "  UINT lCountry;",
       {"struct _StationTuneInfo: IDL: LONG lCountry; header: UINT lCountry"}},
      {"an identifier is missing",
       "IID_ISatelliteInfo =",
       "IID_ISatellite =",
       {"identifier IID_ISatellite is not in the IDL",
        "interface ISatelliteInfo: IDL: [dual, object, oleautomation, pointer_default(unique), "
        "uuid(678F0641-A164-49B2-86C0-5B269C54E547)] : IUnknown; header: [dual, object, "
        "oleautomation, pointer_default(unique), no IID_ISatelliteInfo] : IUnknown"}},
      {"one more interface",
       "struct ILNBInfo : public IUnknown",
       "struct IDish : public IUnknown {};\nstruct ILNBInfo : public IUnknown",
       {"interface IDish is not in the IDL",
        "library ZORTUNEDEXLib: IDL: interface IDishSatInfo; header: interface IDish"}},
  });
}

// Nothing is passed over: what cannot be read ends the comparison.
TEST(InterfaceOutline, TextsThatCannotBeRead) {
  for (const char* header :
       {"struct A : public IDispatch {};", "struct A { LONG a[2]; };", "enum A { B };",
        "enum A : std::int32_t { B };", "enum A : std::int32_t { B = C };", "class A;",
        "struct A : public IUnknown { void B(); };", "struct A { LONG a; }; struct A { LONG a; };",
        "struct A : public IUnknown { virtual HRESULT STDMETHODCALLTYPE B(LONG) = 0; };",
        "inline constexpr IID A = {0x12, 0x3456, 0x3456, {1, 2, 3, 4, 5, 6, 7, 8}};",
        "inline constexpr int A = 1;", "struct A { LONG a;"}) {
    EXPECT_THROW(HeaderText{header}, std::runtime_error) << header;
  }
  for (const char* idl :
       {"interface A;", "typedef union A { LONG a; } A;", "typedef struct A { LONG a; } B;",
        "[object] interface A : B { HRESULT C(LONG); }", "[object interface A : B {}",
        "typedef enum A { B = 1 } A; typedef enum A { B = 1 } A;", "library A { enum B; };",
        "typedef enum A { B = x } A;", "\"text"}) {
    EXPECT_THROW(OutlineOfIdl(idl), std::runtime_error) << idl;
  }
}

TEST(InterfaceOutline, CommentsAndConditionsDeclareNothing) {
  const HeaderText header(
      "// struct A { LONG a; };\n/* struct B { LONG b; }; */\n#define C struct D { \\\n LONG d; "
      "};\n"
      "static_assert(sizeof(LONG) == 4);\nstruct E { LONG e; /* LONG f; */ };");
  EXPECT_EQ(1U, header.records.size());
  ASSERT_TRUE(header.records.contains("E"));
  EXPECT_EQ(1U, header.records.at("E").size());
  const Outline idl = OutlineOfIdl(
      "#ifdef __midl\nimport \"a.idl\";\n#endif\ncpp_quote(\"typedef struct A { LONG a; } A;\")\n"
      "// typedef struct B { LONG b; } B;\ntypedef struct E { LONG e; } E;");
  EXPECT_EQ((Outline{{"struct E", {"LONG e"}}}), idl);
}
