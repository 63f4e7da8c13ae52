#pragma once

#include <string>
#include <string_view>

#include "platform/bstr.h"

/// The one directory that this process fuzzes in; it goes when the process ends. Put TMPDIR on a
/// file system in memory: every save waits for its disk.
class Scratch {
 public:
  /// The directory, emptied.
  static Scratch& Emptied();

  Bstr Path() const;
  std::string File(const std::string& name) const { return m_path + "/" + name; }
  void Write(const std::string& name, std::string_view bytes) const;
  /// The whole file; empty when there is none.
  std::string Read(const std::string& name) const;
  /// Ends the run when the copy of an unreadable file is there and holds other bytes.
  void RequireCopyIs(const std::string& name, const std::string& bytes) const;
  /// Ends the run when something stands there that is none of the database's files.
  void RequireNoStrayFile() const;

 private:
  Scratch();
  ~Scratch();

  std::string m_path;
};
