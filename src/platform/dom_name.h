#pragma once

namespace dom {

/// A name as the functions that take one are given it: any ASCII text.
struct Name {
  constexpr Name(const char* name) : text(name) {}

  /// One that stays what it is where it stands for as long as the library is loaded, as the names
  /// in tables do. A tree may then know it again by its address.
  static constexpr Name Lasting(const char* name) {
    Name result(name);
    result.isLasting = true;
    return result;
  }

  const char* text;
  bool isLasting = false;
};

}  // namespace dom
