#include "kit/text/letter_case.h"

#include <algorithm>

#include "kit/text/utf.h"

namespace zortunedex::kit {

namespace {

constexpr bool IsIn(OLECHAR unit, OLECHAR first, OLECHAR last) {
  return unit >= first && unit <= last;
}

/// Blocks in which capital and small letters take turns. True when the capitals have even codes.
constexpr bool CapitalsAreEven(OLECHAR unit) {
  return IsIn(unit, 0x100, 0x137) || IsIn(unit, 0x14A, 0x177) || IsIn(unit, 0x1A0, 0x1A5) ||
         IsIn(unit, 0x1DE, 0x1EF) || IsIn(unit, 0x1F8, 0x21F) || IsIn(unit, 0x222, 0x233) ||
         IsIn(unit, 0x3D8, 0x3EF) || IsIn(unit, 0x460, 0x481) || IsIn(unit, 0x48A, 0x4BF) ||
         IsIn(unit, 0x4D0, 0x52F) || IsIn(unit, 0x1E00, 0x1E95) || IsIn(unit, 0x1EA0, 0x1EFF);
}
constexpr bool CapitalsAreOdd(OLECHAR unit) {
  return IsIn(unit, 0x139, 0x148) || IsIn(unit, 0x179, 0x17E) || IsIn(unit, 0x1AF, 0x1B0) ||
         IsIn(unit, 0x1CD, 0x1DC) || IsIn(unit, 0x4C1, 0x4CE);
}

constexpr OLECHAR Moved(OLECHAR unit, int distance) {
  return static_cast<OLECHAR>(unit + distance);
}

OLECHAR SmallGreek(OLECHAR unit) {
  if (unit == 0x386) return 0x3AC;
  if (IsIn(unit, 0x388, 0x38A)) return Moved(unit, 37);
  if (unit == 0x38C) return 0x3CC;
  if (unit == 0x38E || unit == 0x38F) return Moved(unit, 63);
  if (IsIn(unit, 0x391, 0x3AB)) return Moved(unit, 0x20);
  return unit == 0x3C2 ? OLECHAR{0x3C3} : unit;  // the sigma of a word's end
}

OLECHAR Small(OLECHAR unit) {
  if (IsIn(unit, 'A', 'Z')) return Moved(unit, 0x20);
  if (unit < 0xC0) return unit;
  if (IsIn(unit, 0xC0, 0xDE) && unit != 0xD7) return Moved(unit, 0x20);
  // The Turkish letters: the dotted capital and the dotless small one are letters of their own.
  if (unit == 0x130 || unit == 0x131) return unit;
  if (unit == 0x178) return 0xFF;
  if (unit == 0x1E9E) return 0xDF;
  if (CapitalsAreEven(unit)) return static_cast<OLECHAR>(unit | 1);
  if (CapitalsAreOdd(unit)) return static_cast<OLECHAR>((unit + 1) & ~1);
  if (IsIn(unit, 0x386, 0x3C2)) return SmallGreek(unit);
  if (IsIn(unit, 0x400, 0x40F)) return Moved(unit, 0x50);
  if (IsIn(unit, 0x410, 0x42F)) return Moved(unit, 0x20);
  if (IsIn(unit, 0x531, 0x556)) return Moved(unit, 0x30);
  if (IsIn(unit, 0xFF21, 0xFF3A)) return Moved(unit, 0x20);
  return unit;
}

}  // namespace

WideText WithoutCase(WideView text) {
  WideText result(text);
  std::transform(result.begin(), result.end(), result.begin(), Small);
  return result;
}

bool HoldsIgnoringCase(WideView text, WideView part) {
  return WithoutCase(text).find(WithoutCase(part)) != WideText::npos;
}

}  // namespace zortunedex::kit
