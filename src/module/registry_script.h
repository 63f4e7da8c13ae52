// Registry scripts: what a component writes into the registry, and takes out of it again, as one
// text that people can read.
//
//   ROOT { KEY ... } ...
//   KEY    NAME [= VALUE] [{ KEY ... }]     with NoRemove or ForceRemove in front where wanted
//          val NAME = VALUE                 a value of the key around it
//          Delete NAME                      a key that registering deletes with its tree
//   VALUE  s TEXT | d NUMBER | m TEXTS | b DIGITS
//
// Tokens stand between white space; a text in single quotes may hold any, and a quote as two. ROOT
// is HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, or their short forms. NUMBER is
// decimal, or hexadecimal behind 0x or &H. TEXTS are separated by a backslash and a zero digit.
// DIGITS are two for every byte. Words of the language are understood in any case.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "module/script_reader.h"
#include "platform/com.h"
#include "platform/registry.h"

struct RegistryScript {
  using Texts = std::vector<std::string>;
  struct Bytes {
    std::string bytes;
  };
  using Data = std::variant<std::string, std::uint32_t, Texts, Bytes>;

  struct Value {
    std::string name;
    Data data;
  };

  struct Key {
    enum class Action {
      Plain,        ///< goes on unregistering when nothing foreign stands below it
      NoRemove,     ///< stays
      ForceRemove,  ///< goes with its tree, before it is written and on unregistering
      Delete,       ///< goes with its tree on registering
    };
    std::string name;
    Action action = Action::Plain;
    std::optional<Data> data;
    std::vector<Value> values;
    std::vector<Key> keys;
  };

  struct Block {
    registry::Root root = registry::Root::ClassesRoot;
    Key top;  ///< nameless: what stands directly below the root
  };

  /// Keys stand at most so deep in one another.
  static constexpr std::size_t kDeepest = 64;

  /// Reads a whole script. E_INVALIDARG, and no blocks, for one that breaks a rule anywhere, that
  /// ends early or holds nothing. So is one that would delete, with its tree, a key that all
  /// programs share, such as CLSID.
  HRESULT Parse(std::string_view script, const ScriptReplacements& replacements);

  std::vector<Block> blocks;
};
