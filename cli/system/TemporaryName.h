#pragma once

#include <string>

#include "cli/system/Descriptor.h"

namespace quillpress::cli {

// The name of a file on its way to its place. The name goes when this does, and also when a signal ends the
// process: a handler removes it and lets the signal act. Only SIGKILL can leave it behind. One name at a time
// is guarded in a process, that of its output. REQUIRES: other threads hold the signals of BlockedSignals.h
// back, so that a handler never meets a name which is only half known.
class TemporaryName {
 public:
  TemporaryName() = default;
  ~TemporaryName();
  TemporaryName(const TemporaryName&) = delete;
  TemporaryName& operator=(const TemporaryName&) = delete;

  // Makes a new file under a new name in `folder`, open for writing. Empty when that fails.
  Descriptor create(const std::string& folder);

  // Gives the nameless file behind `file` a name in `folder`; false when that fails.
  bool link(const Descriptor& file, const std::string& folder);

  // Puts the file, which `file` has open, in the place of `target`, whatever is there; the name is gone then.
  // False when that fails.
  bool moveTo(const Descriptor& file, const std::string& target);

 private:
  void guard(const std::string& path);
  void forget();

  std::string path_;  // empty while there is no name
};

// A new file without a name in `folder`, open for reading and writing, and gone with its descriptor. Empty on
// file systems that have none. It can be linked when the system shows descriptors as files.
Descriptor openNameless(const std::string& folder);
bool canLinkNameless();

// Gives it a name for good, in one step; false when that fails, as it does where something has the name
// already.
bool linkNameless(const Descriptor& file, const std::string& name);

// A file for reading and writing that nobody else needs to find, and that is gone with its descriptor on
// every file system. Empty when that fails.
Descriptor openTemporary(const std::string& folder);

}  // namespace quillpress::cli
