#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "postscript/level3/pdf/Deflate.h"
#include "postscript/level3/pdf/DeflateQueue.h"
#include "postscript/level3/pdf/Fingerprint.h"
#include "postscript/level3/pdf/Output.h"
#include "postscript/level3/pdf/PdfSyntax.h"

namespace quillpress::level3 {

// How a stream's data is handed over.
enum class StreamData {
  kPlain,    // written as it is; the entries name its filters, if any
  kDeflate,  // compressed here, when that makes it shorter
};

// Writes a PDF file from front to back. Objects go out as they are added, so that memory holds no more than
// eight bytes an object, twenty for each that may be found again, one batch of small objects, and a few
// streams that are being compressed meanwhile; the file is the same, however long that takes.
class PdfFile {
 public:
  class OpenStream;

  explicit PdfFile(Output& output);

  // Deflates from now on in a thread of its own what is worth it; the file is the same. Not on Windows.
  void deflateInSecondThread();
  // Whether whoever brings compressed streams may do the same.
  bool usesSecondThread() const { return usesSecondThread_; }

  // A number for an object that is written later, or never.
  ObjectNumber reserve();

  // REQUIRES: the number was reserved, and nothing has been written under it.
  void write(ObjectNumber number, std::string_view object);
  void writeStream(ObjectNumber number, std::string_view entries, std::string_view data, StreamData kind);

  ObjectNumber add(std::string_view object);
  ObjectNumber addStream(std::string_view entries, std::string_view data, StreamData kind);

  // The object with this very content, written once a file.
  ObjectNumber addShared(std::string_view object);
  ObjectNumber addSharedStream(std::string_view entries, std::string_view data, StreamData kind);

  // A stream whose data comes in pieces. Nothing else can be written before it has finished.
  OpenStream openStream(std::string_view entries, StreamData kind);

  // What is the same file for the same `key` (a content's fingerprint, say) need not be made again; 0 when
  // unknown.
  ObjectNumber find(const Fingerprint& key) const;
  void remember(const Fingerprint& key, ObjectNumber number);

  // Writes what the file ends with. `info` may be 0.
  void finish(ObjectNumber root, ObjectNumber info);

  std::size_t objectCount() const { return places_.size() - 1; }

 private:
  void put(std::string_view bytes);
  void begin();
  void beginObject(ObjectNumber number);
  void flushBatch();
  void writeStreamNow(ObjectNumber number, std::string_view entries, std::string_view data, StreamData kind);
  void writeOldest();
  void writeAllUnderWay();
  void putStream(ObjectNumber number, std::string_view entries, std::string_view data,
                 std::string_view deflatedData);
  std::string crossReferences(std::uint64_t lastOffset) const;

  // Where an object is: its offset, or (with the highest bit) its object stream's number and its place
  // therein.
  std::vector<std::uint64_t> places_;
  std::unordered_map<Fingerprint, ObjectNumber, FingerprintHash> shared_;
  Output& output_;
  std::uint64_t offset_ = 0;
  Fingerprinter everything_;

  // Streams that wait for being deflated, and behind one another; null before the first, or without a second
  // thread.
  std::unique_ptr<DeflateQueue> underWay_;
  bool usesSecondThread_ = false;

  // Small objects that wait for their object stream.
  ObjectNumber batchNumber_ = 0;
  std::string batchIndex_;
  std::string batchObjects_;
  std::size_t batchCount_ = 0;
};

class PdfFile::OpenStream {
 public:
  OpenStream(OpenStream&&) = default;

  ObjectNumber number() const { return number_; }
  void write(std::string_view bytes);
  void finish();

 private:
  friend class PdfFile;
  OpenStream(PdfFile& file, ObjectNumber number, ObjectNumber length, StreamData kind);

  PdfFile* file_;
  ObjectNumber number_;
  ObjectNumber length_;
  std::uint64_t start_;
  std::unique_ptr<StreamingDeflater> deflater_;
};

}  // namespace quillpress::level3
