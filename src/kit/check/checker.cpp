#include "kit/check/checker.h"

#include <algorithm>
#include <future>
#include <iterator>
#include <memory>
#include <thread>
#include <tuple>

#include "kit/check/prediction/comparison.h"
#include "kit/check/rules/directory_rules.h"
#include "kit/check/rules/other_rules.h"
#include "kit/check/rules/put_aside_rules.h"
#include "kit/check/rules/rewriting.h"
#include "kit/check/rules/rules.h"
#include "kit/failure.h"
#include "platform/component.h"
#include "platform/thread_locale.h"

namespace zortunedex::kit::check {
namespace {

using markup::Document;

/// The data files first, in their order.
std::size_t RankOf(std::string_view file) {
  return static_cast<std::size_t>(std::ranges::find(kDataFiles, file) - std::begin(kDataFiles));
}

void MoveInto(std::vector<Finding>&& more, std::vector<Finding>& findings) {
  findings.insert(findings.end(), std::make_move_iterator(more.begin()),
                  std::make_move_iterator(more.end()));
}

const Document* DocumentOf(const Documents& documents, std::string_view name) {
  const auto found = documents.find(name);
  return found == documents.end() ? nullptr : &found->second;
}

const Document* Readable(const Documents& documents, std::string_view name) {
  const Document* document = DocumentOf(documents, name);
  return document != nullptr && document->IsReadable() ? document : nullptr;
}

bool HasSatelliteChannels(const ChannelTree& tree) {
  return std::ranges::any_of(tree.groups, [](const ChannelGroup& group) {
    return group.signal == InputSignalDVBSatellite && !group.channels.empty();
  });
}

/// The lists of the channel file. Null where nobody asks for them, and where they cannot be had:
/// who compares them then is told why.
std::unique_ptr<LibraryLists> ListsOf(const Files& files, const Settings& settings) {
  const std::optional<std::string>& bytes = BytesOf(files, kChannels);
  const bool isAsked = settings.file.empty() || settings.file == kChannels;
  if (!isAsked || !bytes || bytes->empty()) return nullptr;
  try {
    return std::make_unique<LibraryLists>(*bytes);
  } catch (const Failure&) {
    return nullptr;
  }
}

/// A check of files on a thread of its own, where there is a processor for it and a thread is to be
/// had; else once it is asked for. Takes the bytes out of the files, which have to stay until then:
/// what cannot be started on a thread is started again, and must not have been moved before.
std::future<Checked> CheckBeside(Files& files, const Settings& settings) {
  const bool isAlone = std::thread::hardware_concurrency() == 1;
  const auto inTurn = std::launch::deferred;
  return std::async(isAlone ? inTurn : std::launch::async | inTurn,
                    [&files, &settings, locale = ThreadLocale()] {
                      locale.TakeOver();
                      [[maybe_unused]] const Component component;
                      return Checker(settings).Check(std::move(files));
                    });
}

}  // namespace

void Sort(std::vector<Finding>& findings) {
  const auto key = [](const Finding& finding) {
    const markup::Place place = finding.place.value_or(markup::Place{0, 0});
    return std::tuple(RankOf(finding.file), std::string_view(finding.file), place.line,
                      place.column, finding.code->name);
  };
  std::ranges::stable_sort(findings, {}, key);
}

Checker::Checker(Settings settings)
    : m_settings(std::move(settings)),
      m_database({m_scratch.Path(), 1, InputSignalFMRadio}),
      m_text(m_database) {}

bool Checker::IsAsked(std::string_view file) const {
  return m_settings.file.empty() || m_settings.file == file;
}

Document Checker::Read(std::string bytes) {
  markup::ReadOptions options;
  options.decode = [this](std::string_view narrow) { return m_text.Decode(narrow); };
  return Document::Read(std::move(bytes), options);
}

Checked Checker::Check(Files files) {
  Checked checked;
  for (const std::string_view name : kDataFiles) {
    const auto found = files.find(name);
    if (found == files.end() || !found->second) continue;
    CheckFile(found->first, *std::move(found->second), checked);
  }
  for (auto& [name, bytes] : files) {
    if (bytes && !PutAsideOf(name).empty()) CheckPutAside(name, *std::move(bytes), checked);
  }
  CheckMissing(files, checked);
  std::erase_if(checked.findings,
                [this](const Finding& finding) { return !IsAsked(finding.file); });
  Sort(checked.findings);
  return checked;
}

void Checker::CheckFile(const std::string& name, std::string bytes, Checked& checked) {
  if (bytes.empty()) {
    Finding finding = OfFile("ZT006", name, "the file has no bytes");
    finding.fate = Finding::Fate::Removed;
    checked.findings.push_back(std::move(finding));
    return;
  }
  const Document& document = checked.documents.emplace(name, Read(std::move(bytes))).first->second;
  Report report(document, name, checked.findings, m_settings.mostOfACode);
  CheckMarkup(document, report);
  if (name == kChannels || name == kPresets) CheckChannels(name, document, checked);
  if (name == kCatalogue) CheckCatalogue(document, report);
  // The last of them: what it refers to was read.
  if (name == kSettings) {
    CheckDishes(document, Readable(checked.documents, kCatalogue),
                Readable(checked.documents, kChannels), report);
  }
}

void Checker::CheckChannels(const std::string& name, const Document& document, Checked& checked) {
  if (document.Elements().empty()) return;
  const ChannelFile kind = name == kPresets ? ChannelFile::Presets : ChannelFile::Channels;
  const ChannelTree tree = ReadTree(document, kind);
  Report report(document, name, checked.findings, m_settings.mostOfACode);
  CheckChannelFile({document, tree, kind, report, m_text, m_settings.knowsCountry});
  if (kind == ChannelFile::Presets) {
    CheckAreas(document, tree, report);
  } else {
    checked.hasSatelliteChannels = HasSatelliteChannels(tree);
  }
}

void Checker::CheckPutAside(const std::string& name, std::string bytes, Checked& checked) {
  const std::string target(PutAsideOf(name));
  if (target != kChannels && target != kPresets) return;
  Document aside = Read(std::move(bytes));
  if (!aside.Damages().empty()) {
    const std::optional<std::string> mended = aside.Mends().Apply(aside.Bytes());
    if (mended) aside = Read(*mended);
  }
  checked.findings.push_back(
      check::CheckPutAside(aside, DocumentOf(checked.documents, target), name, target));
}

void Checker::CheckMissing(const Files& files, Checked& checked) {
  if (BytesOf(files, kCatalogue) || !checked.hasSatelliteChannels) return;
  checked.findings.push_back(
      OfFile("ZT005", std::string(kCatalogue),
             "satellite channels are there, and no catalogue of satellites"));
}

std::vector<Finding> Checker::Compare(const Documents& documents, LibraryLists* lists) {
  std::vector<Finding> findings;
  for (const auto& [name, document] : documents) {
    if (!IsAsked(name)) continue;
    MoveInto(lists != nullptr && name == kChannels
                 ? CompareChannels(document, *lists, m_database, m_text)
                 : CompareFile(name, document, document.Bytes(), m_database, m_text),
             findings);
  }
  return findings;
}

std::vector<Finding> CheckDirectory(const std::string& directory, const Settings& settings) {
  Settings capped = settings;
  capped.mostOfACode = std::min(capped.mostOfACode, kMostOfACode);
  Checker checker(capped);
  Files files = ReadFiles(directory);
  const std::unique_ptr<LibraryLists> lists = ListsOf(files, capped);
  std::future<Checked> checking = CheckBeside(files, capped);
  if (lists != nullptr) lists->OpenFirst();
  Checked checked = checking.get();
  MoveInto(checker.Compare(checked.documents, lists.get()), checked.findings);
  std::vector<Finding> names = CheckNames(directory);
  std::erase_if(names, [&](const Finding& finding) {
    return !settings.file.empty() && finding.file != settings.file;
  });
  MoveInto(std::move(names), checked.findings);
  Sort(checked.findings);
  return std::move(checked.findings);
}

}  // namespace zortunedex::kit::check
