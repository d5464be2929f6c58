#pragma once

#include <map>
#include <qpdf/QPDFObjectHandle.hh>
#include <span>
#include <string>

#include "cli/content/ObjectUses.h"
#include "cli/spool/Deflater.h"
#include "cli/spool/SpoolWorker.h"

struct PdfObject;

namespace quillpress::cli {

// An image or pattern that a written page draws, directly or in a pattern.
struct StoredObject {
  std::string name;  // with its slash
  bool isPattern = false;
  bool isBroken = false;        // cannot be written; the rest is not set
  QPDFObjectHandle dictionary;  // of the stream; a pattern's resources are yet to be set
  SpoolWorker::Ticket data = 0;
  ObjectUses objects;  // what a pattern's own content names
};

// The objects of the written pages, each kept once however many pages draw it.
class ObjectStore {
 public:
  // Both live as long as the store; the deflater is for the worker alone.
  ObjectStore(SpoolWorker& worker, const Deflater& deflater) : worker_(worker), deflater_(deflater) {}

  [[nodiscard]] bool has(unsigned number) const { return stored_.contains(number); }

  // Keeps those of `uses` that are new, with what they name themselves; `list` is the converter's. Their data
  // stays where it is until the worker has finished. Throws PageError when one of them holds numbers that no
  // PDF reader takes.
  void keep(const ObjectUses& uses, std::span<const PdfObject* const> list);

  // By number. Objects that a page names and the converter does not know are missing here.
  [[nodiscard]] const std::map<unsigned, StoredObject>& objects() const { return stored_; }

 private:
  void keepImage(StoredObject& object, const PdfObject& source);
  void keepPattern(StoredObject& object, const PdfObject& source);

  SpoolWorker& worker_;
  const Deflater& deflater_;
  std::map<unsigned, StoredObject> stored_;
};

}  // namespace quillpress::cli
