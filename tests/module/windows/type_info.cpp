#include "module/windows/type_info.h"

#include <map>

#include "platform/bstr.h"
#include "platform/text.h"

std::string NameOf(ITypeInfo* info, MEMBERID member) {
  Bstr name;
  info->GetDocumentation(member, name.Receive(), nullptr, nullptr, nullptr);
  return text::ToUtf8(name.View());
}

std::string TypeOf(ITypeInfo* info, const TYPEDESC& type) {
  static const std::map<VARTYPE, std::string> kNames = {
      {VT_I1, "CHAR"},         {VT_UI1, "BYTE"},  {VT_I4, "LONG"},
      {VT_UI4, "DWORD"},       {VT_UINT, "UINT"}, {VT_BSTR, "BSTR"},
      {VT_HRESULT, "HRESULT"}, {VT_VOID, "void"}, {VT_UNKNOWN, "IUnknown*"},
  };
  if (type.vt == VT_PTR) return TypeOf(info, *type.lptdesc) + "*";
  if (type.vt == VT_USERDEFINED) {
    ComPtr<ITypeInfo> named;
    if (FAILED(info->GetRefTypeInfo(type.hreftype, named.Receive()))) return "nothing";
    return NameOf(named.Get());
  }
  const auto found = kNames.find(type.vt);
  return found == kNames.end() ? "type " + std::to_string(type.vt) : found->second;
}

std::string TypeOf(const std::string& declared) {
  // A type library knows no constants and no references.
  std::string type = declared.starts_with("const ") ? declared.substr(6) : declared;
  if (type == "REFIID") return "GUID*";
  if (type.starts_with("BOOL")) type.replace(0, 4, "LONG");
  return type;
}

TYPEATTR AttributesOf(ITypeInfo* info) {
  TYPEATTR* found = nullptr;
  if (FAILED(info->GetTypeAttr(&found))) return {};
  const TYPEATTR attributes = *found;
  info->ReleaseTypeAttr(found);
  return attributes;
}

void EachFunction(ITypeInfo* info, const std::function<void(const FUNCDESC&)>& look) {
  const UINT count = AttributesOf(info).cFuncs;
  for (UINT i = 0; i < count; ++i) {
    FUNCDESC* function = nullptr;
    if (FAILED(info->GetFuncDesc(i, &function))) continue;
    look(*function);
    info->ReleaseFuncDesc(function);
  }
}

void EachVariable(ITypeInfo* info, const std::function<void(const VARDESC&)>& look) {
  const UINT count = AttributesOf(info).cVars;
  for (UINT i = 0; i < count; ++i) {
    VARDESC* variable = nullptr;
    if (FAILED(info->GetVarDesc(i, &variable))) continue;
    look(*variable);
    info->ReleaseVarDesc(variable);
  }
}
