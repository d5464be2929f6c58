#include "tests/umpd/launcher/support/Sender.h"

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

namespace quillpress::harness {

Sender::Sender(Channel channel) : channel_(std::move(channel)) {}

Sender::~Sender() = default;

void Sender::begin(const Record& record) {
  section_.reset(OpenFileMappingW(FILE_MAP_ALL_ACCESS, FALSE, channel_.memory().c_str()));
  ASSERT_TRUE(section_) << "error " << GetLastError();
  void* view = MapViewOfFile(section_.get(), FILE_MAP_ALL_ACCESS, 0, 0, sizeof record);
  ASSERT_NE(view, nullptr);
  std::memcpy(view, record.data(), record.size());
  UnmapViewOfFile(view);

  acknowledge_.reset(CreateEventW(nullptr, FALSE, FALSE, channel_.acknowledgeEvent().c_str()));
  request_.reset(OpenEventW(EVENT_MODIFY_STATE, FALSE, channel_.requestEvent().c_str()));
  ASSERT_TRUE(acknowledge_);
  ASSERT_TRUE(request_) << "error " << GetLastError();
  SetEvent(request_.get());
}

bool Sender::isAcknowledged(DWORD milliseconds) const {
  return WaitForSingleObject(acknowledge_.get(), milliseconds) == WAIT_OBJECT_0;
}

Record startPrintRecord(const std::string& printerName) {
  Record record{};
  setText(record, field::kCommand, "startprint");
  setText(record, field::kPrinterName, printerName);
  return record;
}

Record stopPrintRecord(const std::string& printerName, const std::string& documentName,
                       const std::string& outputPath) {
  Record record{};
  setText(record, field::kCommand, "stopprint");
  setText(record, field::kPrinterName, printerName);
  setText(record, field::kOutputPath, outputPath);
  setText(record, field::kDocumentName, documentName);
  return record;
}

}  // namespace quillpress::harness
