#pragma once

#include <optional>
#include <string>

#include "kit/failure.h"

namespace zortunedex::kit {

/// A save that failed: what() ends with the state of the file.
struct FailedSave : Failure {
  FailedSave(HRESULT result, const std::string& reason, const std::string& state)
      : Failure(result, reason + "; " + state), cause(reason) {}

  std::string cause;  ///< without the state, for who saved a copy
};

/// Knows what a file was before a save, and so what a failed one made of it.
class SaveWatch {
 public:
  /// `directory` is UTF-8.
  SaveWatch(const std::string& directory, const std::string& file);

  /// Calls what saves the file and compares it with what was meant. A Failure of it becomes a
  /// FailedSave that tells the cause, which is found by trying, and the state of the file, which is
  /// judged by its bytes: "ChanInfo.xml could not be written: No space left on device; the file is
  /// unchanged".
  template <typename Save>
  void Run(Save save) const {
    try {
      save();
    } catch (const Failure& failure) {
      Raise(failure);
    }
  }

 private:
  [[noreturn]] void Raise(const Failure& failure) const;

  std::string m_path;
  std::string m_file;
  std::optional<std::string> m_before;
};

}  // namespace zortunedex::kit
