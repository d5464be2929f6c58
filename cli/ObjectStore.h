#ifndef QUILLPRESS_CLI_OBJECT_STORE_H
#define QUILLPRESS_CLI_OBJECT_STORE_H

#include <map>
#include <set>
#include <span>
#include <string>

#include "cli/Deflater.h"
#include "cli/Spool.h"

struct PdfObject;

namespace quillpress::cli {

/** An image or pattern that a written page draws, directly or in a pattern. */
struct StoredObject {
  std::string name;  // with its slash
  bool isPattern = false;
  std::string dictionary;  // body of the stream dictionary as the converter gives it
  Spool::Piece data;
  bool isDeflated = false;
  std::set<unsigned> objects;  // what a pattern's own content names
};

/** The objects of the written pages, each kept once in the spool however many pages draw it. */
class ObjectStore {
 public:
  ObjectStore(Spool& spool, const Deflater& deflater) : spool_(spool), deflater_(deflater) {}

  [[nodiscard]] bool has(unsigned number) const { return stored_.contains(number); }

  /** Keeps object `number` of the converter's list, with what it names itself. */
  void keep(unsigned number, std::span<const PdfObject* const> list);

  /** By number. Objects that a page names and the converter does not know are missing here. */
  [[nodiscard]] const std::map<unsigned, StoredObject>& objects() const { return stored_; }

 private:
  void keepData(StoredObject& object, std::string_view data, bool deflate);

  Spool& spool_;
  const Deflater& deflater_;
  std::map<unsigned, StoredObject> stored_;
};

}  // namespace quillpress::cli

#endif
