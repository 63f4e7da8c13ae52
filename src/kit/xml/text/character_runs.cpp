#include "kit/xml/text/character_runs.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "kit/text/utf.h"
#include "kit/xml/text/characters.h"

namespace zortunedex::kit::markup {
namespace {

constexpr std::string_view kReplacementText = "\xEF\xBF\xBD";

/// Blanks and markup. None of these is the second byte of a character in any code page.
bool EndsWord(char byte) {
  constexpr std::string_view kMarkup = "<>&\"'=;/!?";
  return Is(byte, kBlankByte | kControlByte) || kMarkup.find(byte) != std::string_view::npos;
}

/// The character at the front, or nothing; `size` is what it takes up.
std::optional<std::uint32_t> CharacterAt(std::string_view bytes, std::size_t& size) {
  const std::size_t before = bytes.size();
  const std::optional<std::uint32_t> character = utf::Next(bytes);
  size = character ? before - bytes.size() : 1;
  return character;
}

/// Behind the bytes at `at` that are ASCII and no control characters, eight at a time.
std::size_t SkipPlain(std::string_view bytes, std::size_t at) {
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  for (std::uint64_t word = 0; bytes.size() - at >= sizeof(word); at += sizeof(word)) {
    std::memcpy(&word, bytes.data() + at, sizeof(word));
    // The top bit of a byte that is below a blank, or has it.
    const std::uint64_t unusual = ((word - kOnes * ' ') | word) & (kOnes * 0x80);
    if (unusual != 0) break;
  }
  return at;
}

/// Text that stands for itself wherever the word stood.
bool IsHarmless(std::string_view text) {
  while (!text.empty()) {
    const std::optional<std::uint32_t> character = utf::Next(text);
    if (!character || !IsCharacter(*character)) return false;
    if (*character < 0x80 && EndsWord(static_cast<char>(*character))) return false;
  }
  return true;
}

std::string WithReplacements(std::string_view word) {
  std::string text;
  while (!word.empty()) {
    std::size_t size = 0;
    const auto character = CharacterAt(word, size);
    const bool isGood = character && IsCharacter(*character);
    text += isGood ? word.substr(0, size) : kReplacementText;
    word.remove_prefix(size);
  }
  return text;
}

}  // namespace

CharacterRuns::CharacterRuns(std::string_view bytes, const Decode& decode) : m_bytes(bytes) {
  std::size_t at = 0;
  while ((at = SkipPlain(bytes, at)) < bytes.size()) {
    if (!Is(bytes[at], kControlByte | kHighByte)) {
      ++at;
      continue;
    }
    if (m_runs.size() > kMostDamages) return;
    std::size_t size = 0;
    const auto character = CharacterAt(bytes.substr(at), size);
    if (!character) {
      TakeWord(at, decode);
    } else if (!IsCharacter(*character)) {
      TakeForbidden(at);
    } else {
      at += size;
    }
  }
}

void CharacterRuns::TakeForbidden(std::size_t& at) {
  Run run;
  run.reason = Reason::ForbiddenCharacter;
  run.isMended = true;
  const std::size_t begin = at;
  while (at < m_bytes.size()) {
    std::size_t size = 0;
    const auto character = CharacterAt(m_bytes.substr(at), size);
    if (!character || IsCharacter(*character)) break;
    run.text += kReplacementText;
    at += size;
  }
  run.span = {begin, at};
  m_runs.push_back(std::move(run));
}

void CharacterRuns::TakeWord(std::size_t& at, const Decode& decode) {
  const std::size_t least = m_runs.empty() ? 0 : m_runs.back().span.end;
  std::size_t begin = at;
  while (begin > least && !EndsWord(m_bytes[begin - 1])) --begin;
  while (at < m_bytes.size() && !EndsWord(m_bytes[at])) ++at;
  Run run;
  run.span = {begin, at};
  const std::string_view word = run.span.In(m_bytes);
  std::optional<std::string> text = decode ? decode(word) : std::nullopt;
  run.isMended = text && IsHarmless(*text);
  run.text = run.isMended ? *std::move(text) : WithReplacements(word);
  m_runs.push_back(std::move(run));
}

std::vector<CharacterRuns::Run>::const_iterator CharacterRuns::FirstIn(Span span) const {
  return std::lower_bound(
      m_runs.begin(), m_runs.end(), span.begin,
      [](const Run& run, std::uint32_t begin) { return run.span.begin < begin; });
}

bool CharacterRuns::Touch(Span span) const {
  if (m_runs.empty()) return false;
  const auto first = FirstIn(span);
  return first != m_runs.end() && first->span.begin < span.end;
}

std::string CharacterRuns::Replaced(Span span) const {
  std::string text;
  std::size_t taken = span.begin;
  for (auto run = FirstIn(span); run != m_runs.end() && run->span.end <= span.end; ++run) {
    text += Span(taken, run->span.begin).In(m_bytes);
    text += run->text;
    taken = run->span.end;
  }
  return text += Span(taken, span.end).In(m_bytes);
}

}  // namespace zortunedex::kit::markup
