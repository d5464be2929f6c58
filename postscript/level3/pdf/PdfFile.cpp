#include "postscript/level3/pdf/PdfFile.h"

#include <algorithm>

#include "postscript/level3/pdf/PdfNumbers.h"

namespace quillpress::level3 {

namespace {

constexpr std::uint64_t kInBatch = 1ULL << 63;
constexpr std::size_t kMostInBatch = 200;
constexpr std::size_t kMostBytesInBatch = 64UL * 1024;

constexpr std::size_t kMostUnderWay = 1024UL * 1024;

// A place of an object within its batch takes one byte in the table.
static_assert(kMostInBatch <= 256);

void appendBigEndian(std::string& bytes, std::uint64_t value, int count) {
  for (int shift = 8 * (count - 1); shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift & 0xFF);
}

int bytesFor(std::uint64_t value) {
  int count = 1;
  while (count < 8 && value >> (8 * count) != 0) ++count;
  return count;
}

}  // namespace

PdfFile::PdfFile(Output& output) : places_(1), output_(output) {}

void PdfFile::deflateInSecondThread() {
  usesSecondThread_ = WorkerThread::isOffered();
}

// Before the first object, so that a job that fails early leaves nothing at all.
void PdfFile::begin() {
  if (offset_ > 0) return;
  // Bytes above 127 in the second line tell transfer programs that the file is no text.
  put("%PDF-1.7\n%\xE2\xE3\xCF\xD3\n");
}

void PdfFile::put(std::string_view bytes) {
  everything_.add(bytes);
  offset_ += bytes.size();
  output_.write(bytes);
}

ObjectNumber PdfFile::reserve() {
  places_.push_back(0);
  return static_cast<ObjectNumber>(places_.size() - 1);
}

void PdfFile::beginObject(ObjectNumber number) {
  begin();
  places_[number] = offset_;
  std::string text;
  appendInteger(text, number);
  text += " 0 obj\n";
  put(text);
}

void PdfFile::write(ObjectNumber number, std::string_view object) {
  if (batchNumber_ == 0) batchNumber_ = reserve();
  places_[number] = kInBatch | static_cast<std::uint64_t>(batchNumber_) << 8 | batchCount_;
  appendInteger(batchIndex_, number);
  batchIndex_ += ' ';
  appendInteger(batchIndex_, static_cast<std::int64_t>(batchObjects_.size()));
  batchIndex_ += ' ';
  batchObjects_ += object;
  batchObjects_ += '\n';
  ++batchCount_;
  if (batchCount_ == kMostInBatch || batchObjects_.size() >= kMostBytesInBatch) flushBatch();
}

void PdfFile::flushBatch() {
  if (batchCount_ == 0) return;
  DictionaryText entries;
  entries.name("Type", "ObjStm");
  entries.integer("N", static_cast<std::int64_t>(batchCount_));
  entries.integer("First", static_cast<std::int64_t>(batchIndex_.size()));
  const ObjectNumber number = batchNumber_;
  const std::string data = batchIndex_ + batchObjects_;
  batchNumber_ = 0;
  batchCount_ = 0;
  batchIndex_.clear();
  batchObjects_.clear();
  writeStream(number, entries.entries(), data, StreamData::kDeflate);
}

void PdfFile::writeStream(ObjectNumber number, std::string_view entries, std::string_view data,
                          StreamData kind) {
  if (kind == StreamData::kDeflate && usesSecondThread_) {
    if (!underWay_) underWay_ = std::make_unique<DeflateQueue>();
    underWay_->add(number, entries, data);
    while (!underWay_->isEmpty() && (underWay_->isReady() || underWay_->bytes() > kMostUnderWay))
      writeOldest();
    return;
  }
  writeAllUnderWay();
  writeStreamNow(number, entries, data, kind);
}

void PdfFile::writeStreamNow(ObjectNumber number, std::string_view entries, std::string_view data,
                             StreamData kind) {
  putStream(number, entries, data, kind == StreamData::kDeflate ? deflated(data) : std::string());
}

void PdfFile::writeOldest() {
  const DeflateQueue::Stream stream = underWay_->take();
  putStream(stream.number, stream.entries, stream.data, stream.deflatedData());
}

void PdfFile::writeAllUnderWay() {
  while (underWay_ && !underWay_->isEmpty()) writeOldest();
}

// `deflatedData` may be empty, when that was not asked for.
void PdfFile::putStream(ObjectNumber number, std::string_view entries, std::string_view data,
                        std::string_view deflatedData) {
  const bool isDeflated = !deflatedData.empty() &&
                          deflatedData.size() + std::string_view("/Filter/FlateDecode").size() < data.size();
  const std::string_view bytes = isDeflated ? deflatedData : data;
  beginObject(number);
  std::string head = "<<";
  head += entries;
  if (isDeflated) head += "/Filter/FlateDecode";
  head += "/Length ";
  appendInteger(head, static_cast<std::int64_t>(bytes.size()));
  head += ">>stream\n";
  put(head);
  put(bytes);
  put("\nendstream\nendobj\n");
}

ObjectNumber PdfFile::add(std::string_view object) {
  const ObjectNumber number = reserve();
  write(number, object);
  return number;
}

ObjectNumber PdfFile::addStream(std::string_view entries, std::string_view data, StreamData kind) {
  const ObjectNumber number = reserve();
  writeStream(number, entries, data, kind);
  return number;
}

ObjectNumber PdfFile::find(const Fingerprint& key) const {
  const auto found = shared_.find(key);
  return found == shared_.end() ? 0 : found->second;
}

void PdfFile::remember(const Fingerprint& key, ObjectNumber number) {
  shared_.emplace(key, number);
}

ObjectNumber PdfFile::addShared(std::string_view object) {
  const Fingerprint key = fingerprintOf(object);
  ObjectNumber number = find(key);
  if (number == 0) {
    number = add(object);
    remember(key, number);
  }
  return number;
}

ObjectNumber PdfFile::addSharedStream(std::string_view entries, std::string_view data, StreamData kind) {
  Fingerprinter content;
  content.add(entries);
  content.add("stream");
  content.add(data);
  const Fingerprint key = content.finish();
  ObjectNumber number = find(key);
  if (number == 0) {
    number = addStream(entries, data, kind);
    remember(key, number);
  }
  return number;
}

std::string PdfFile::crossReferences(std::uint64_t lastOffset) const {
  const int width = std::max(bytesFor(lastOffset), bytesFor(places_.size()));
  std::string table;
  table.reserve(places_.size() * static_cast<std::size_t>(width + 2));
  for (const std::uint64_t place : places_) {
    if (place == 0) {
      // Free, and the end of the list of free objects.
      appendBigEndian(table, 0, 1 + width + 1);
    } else if ((place & kInBatch) != 0) {
      table += '\2';
      appendBigEndian(table, (place & ~kInBatch) >> 8, width);
      appendBigEndian(table, place & 0xFF, 1);
    } else {
      table += '\1';
      appendBigEndian(table, place, width);
      table += '\0';
    }
  }
  return table;
}

void PdfFile::finish(ObjectNumber root, ObjectNumber info) {
  flushBatch();
  writeAllUnderWay();
  begin();
  const ObjectNumber number = reserve();
  const std::uint64_t start = offset_;
  places_[number] = start;
  const std::string table = crossReferences(start);
  const int width = static_cast<int>(table.size() / places_.size()) - 2;

  DictionaryText entries;
  entries.name("Type", "XRef");
  entries.integer("Size", static_cast<std::int64_t>(places_.size()));
  std::string widths = "[1 ";
  appendInteger(widths, width);
  widths += " 1]";
  entries.entry("W", widths);
  entries.reference("Root", root);
  if (info != 0) entries.reference("Info", info);
  // The identity comes from the content, so that a job makes the same file again.
  std::string identity = "[";
  appendString(identity, bytesOf(everything_.finish()));
  appendString(identity, bytesOf(everything_.finish()));
  entries.entry("ID", identity + "]");
  writeStreamNow(number, entries.entries(), table, StreamData::kDeflate);

  std::string tail = "startxref\n";
  appendInteger(tail, static_cast<std::int64_t>(start));
  put(tail + "\n%%EOF\n");
}

PdfFile::OpenStream PdfFile::openStream(std::string_view entries, StreamData kind) {
  const ObjectNumber number = reserve();
  const ObjectNumber length = reserve();
  writeAllUnderWay();
  beginObject(number);
  std::string head = "<<";
  head += entries;
  if (kind == StreamData::kDeflate) head += "/Filter/FlateDecode";
  head += "/Length ";
  appendReference(head, length);
  head += ">>stream\n";
  put(head);
  return {*this, number, length, kind};
}

PdfFile::OpenStream::OpenStream(PdfFile& file, ObjectNumber number, ObjectNumber length, StreamData kind)
    : file_(&file), number_(number), length_(length), start_(file.offset_) {
  if (kind != StreamData::kDeflate) return;
  deflater_ = std::make_unique<StreamingDeflater>([&file](std::string_view bytes) { file.put(bytes); });
}

void PdfFile::OpenStream::write(std::string_view bytes) {
  if (deflater_) {
    deflater_->write(bytes);
  } else {
    file_->put(bytes);
  }
}

void PdfFile::OpenStream::finish() {
  if (deflater_) deflater_->finish();
  std::string length;
  appendInteger(length, static_cast<std::int64_t>(file_->offset_ - start_));
  file_->put("\nendstream\nendobj\n");
  file_->write(length_, length);
}

}  // namespace quillpress::level3
