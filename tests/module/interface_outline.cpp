#include "module/interface_outline.h"

#include <algorithm>
#include <set>

namespace {

using Lines = std::vector<std::string>;

std::string Joined(const Lines& parts) {
  std::string text;
  for (const std::string& part : parts) text += (text.empty() ? "" : ", ") + part;
  return text;
}

Lines LinesOf(const DeclaredValues& values) {
  Lines lines;
  for (const auto& [name, value] : values) lines.push_back(name + " = " + std::to_string(value));
  return lines;
}

Lines LinesOf(const std::vector<DeclaredParameter>& fields) {
  Lines lines;
  for (const DeclaredParameter& field : fields) lines.push_back(field.type + " " + field.name);
  return lines;
}

// What the header says in words: through these pointers a method is given a value. Through every
// other pointer to a value it hands one out.
const std::set<std::string> kGiven = {"SetStationInfo pStationInfo",
                                      "GetChannelInfoByStation pStationInfo",
                                      "GetTransponderInfoByName pName", "GetSatInfoByID pID"};

std::string DirectionOf(const HeaderText& header, const std::string& method,
                        const DeclaredParameter& parameter) {
  const std::string& type = parameter.type;
  const std::string named = type.substr(0, type.find('*'));
  const auto stars = static_cast<std::size_t>(std::count(type.begin(), type.end(), '*'));
  const bool isInterface = named == "IUnknown" || header.interfaces.contains(named);
  const bool given = stars == 0 || type.starts_with("const ") || (stars == 1 && isInterface) ||
                     kGiven.contains(method + " " + parameter.name);
  return given ? "[in] " : "[out] ";
}

std::string IdentifierOf(const HeaderText& header, const std::string& constant) {
  const auto found = header.identifiers.find(constant);
  if (found == header.identifiers.end()) return "no " + constant;
  return "uuid(" + found->second.substr(1, found->second.size() - 2) + ")";
}

// An identifier of something else has no place in an IDL, or its interface is missing in the
// header.
bool IsOfDeclaration(const HeaderText& header, const std::string& constant) {
  return constant == "CLSID_ZorTunedex" || constant == "LIBID_ZORTUNEDEXLib" ||
         (constant.starts_with("IID_") && header.interfaces.contains(constant.substr(4)));
}

Lines InterfaceLines(const HeaderText& header, const std::string& name) {
  Lines lines = {"[dual, object, oleautomation, pointer_default(unique), " +
                 IdentifierOf(header, "IID_" + name) + "] : IUnknown"};
  for (const DeclaredMethod& method : header.interfaces.at(name)) {
    Lines parameters;
    for (const DeclaredParameter& parameter : method.parameters) {
      parameters.push_back(DirectionOf(header, method.name, parameter) + parameter.type + " " +
                           parameter.name);
    }
    lines.push_back("[id(" + std::to_string(lines.size()) + ")] HRESULT " + method.name + "(" +
                    Joined(parameters) + ")");
  }
  return lines;
}

Lines LibraryLines(const HeaderText& header) {
  Lines lines = {"[helpstring(\"ZorTunedex 1.0 Type Library\"), " +
                 IdentifierOf(header, "LIBID_ZORTUNEDEXLib") + ", version(1.0)]"};
  for (const auto& each : header.interfaces) lines.push_back("interface " + each.first);
  lines.push_back("[helpstring(\"ZorTunedex Class\"), " + IdentifierOf(header, "CLSID_ZorTunedex") +
                  "] coclass ZorTunedex: [default] interface IZorTunedex");
  return lines;
}

class IdlReader {
 public:
  explicit IdlReader(std::string_view text) : m_reader(text) {}

  Outline Read() {
    while (!m_reader.AtEnd()) {
      if (m_reader.Accept("import")) {
        m_reader.Next();
        m_reader.Expect(";");
      } else if (m_reader.Accept("cpp_quote")) {
        m_reader.Bracketed();
      } else if (m_reader.Accept("typedef")) {
        ReadType();
      } else {
        const std::string attributes = Attributes();
        if (m_reader.Accept("library")) {
          ReadLibrary(attributes);
        } else {
          ReadInterface(attributes);
        }
      }
    }
    return m_outline;
  }

 private:
  // "[b, a(1)]" in the order of the alphabet; what needs none has none.
  std::string Attributes() {
    if (m_reader.Current() != "[") return {};
    Lines attributes;
    for (m_reader.Expect("["); !m_reader.Accept("]");) {
      std::string& attribute = attributes.emplace_back(m_reader.Next());
      if (m_reader.Current() == "(") attribute += "(" + m_reader.Bracketed() + ")";
      if (!m_reader.Accept(",") && m_reader.Current() != "]") m_reader.Fail();
    }
    std::sort(attributes.begin(), attributes.end());
    return "[" + Joined(attributes) + "]";
  }

  void Keep(const std::string& name, const std::string& first, const Lines& lines) {
    Lines all = lines;
    if (!first.empty()) all.insert(all.begin(), first);
    if (!m_outline.emplace(name, all).second) m_reader.Fail();
  }

  void ReadType() {
    const std::string attributes = Attributes();
    const bool isRecord = m_reader.Accept("struct");
    if (!isRecord) m_reader.Expect("enum");
    const std::string name = m_reader.Next();
    if (isRecord) {
      Keep("struct " + name, attributes, LinesOf(m_reader.Fields()));
    } else {
      Keep("enum " + name, attributes, LinesOf(m_reader.Values()));
    }
    m_reader.Expect(name);
    m_reader.Expect(";");
  }

  void ReadInterface(const std::string& attributes) {
    m_reader.Expect("interface");
    const std::string name = m_reader.Next();
    m_reader.Expect(":");
    const std::string first = attributes + " : " + m_reader.Next();
    Lines methods;
    for (m_reader.Expect("{"); !m_reader.Accept("}");) methods.push_back(Method());
    Keep("interface " + name, first, methods);
  }

  std::string Method() {
    std::string line = Attributes();
    line += " " + m_reader.Next();
    line += " " + m_reader.Next();
    Lines parameters;
    for (m_reader.Expect("("); !m_reader.Accept(")");) {
      const std::string direction = Attributes();
      const DeclaredParameter parameter = m_reader.Declaration();
      parameters.push_back(direction + " " + parameter.type + " " + parameter.name);
      if (!m_reader.Accept(",") && m_reader.Current() != ")") m_reader.Fail();
    }
    m_reader.Expect(";");
    return line + "(" + Joined(parameters) + ")";
  }

  void ReadLibrary(const std::string& attributes) {
    const std::string name = m_reader.Next();
    Lines interfaces;
    Lines classes;
    for (m_reader.Expect("{"); !m_reader.Accept("}"); m_reader.Expect(";")) {
      if (m_reader.Accept("importlib")) {
        m_reader.Bracketed();
      } else if (m_reader.Accept("interface")) {
        interfaces.push_back("interface " + m_reader.Next());
      } else {
        classes.push_back(Class());
      }
    }
    std::sort(interfaces.begin(), interfaces.end());
    interfaces.insert(interfaces.end(), classes.begin(), classes.end());
    Keep("library " + name, attributes, interfaces);
  }

  std::string Class() {
    std::string line = Attributes();
    m_reader.Expect("coclass");
    line += " coclass " + m_reader.Next() + ":";
    for (m_reader.Expect("{"); !m_reader.Accept("}"); m_reader.Expect(";")) {
      line += " " + Attributes();
      m_reader.Expect("interface");
      line += " interface " + m_reader.Next();
    }
    return line;
  }

  DeclarationReader m_reader;
  Outline m_outline;
};

std::string FirstDifference(const Lines& idl, const Lines& header) {
  const auto [left, right] = std::mismatch(idl.begin(), idl.end(), header.begin(), header.end());
  return "IDL: " + (left == idl.end() ? "nothing" : *left) +
         "; header: " + (right == header.end() ? "nothing" : *right);
}

}  // namespace

Outline OutlineOfIdl(std::string_view text) { return IdlReader(text).Read(); }

Outline OutlineOf(const HeaderText& header) {
  Outline outline;
  for (const auto& each : header.interfaces) {
    outline["interface " + each.first] = InterfaceLines(header, each.first);
  }
  for (const auto& [name, values] : header.enumerations) {
    Lines& lines = outline["enum " + name] = LinesOf(values);
    // Else it would have 16 bits.
    lines.insert(lines.begin(), "[v1_enum]");
  }
  for (const auto& [name, fields] : header.records) outline["struct " + name] = LinesOf(fields);
  outline["library ZORTUNEDEXLib"] = LibraryLines(header);
  for (const auto& each : header.identifiers) {
    if (!IsOfDeclaration(header, each.first)) outline["identifier " + each.first] = {};
  }
  return outline;
}

std::vector<std::string> Differences(const Outline& idl, const Outline& header) {
  std::vector<std::string> differences;
  for (const auto& [name, lines] : header) {
    const auto found = idl.find(name);
    if (found == idl.end()) {
      differences.push_back(name + " is not in the IDL");
    } else if (found->second != lines) {
      differences.push_back(name + ": " + FirstDifference(found->second, lines));
    }
  }
  for (const auto& each : idl) {
    if (!header.contains(each.first)) differences.push_back(each.first + " is not in the header");
  }
  return differences;
}
