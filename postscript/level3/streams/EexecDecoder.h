#pragma once

#include <array>
#include <vector>

#include "postscript/level3/streams/ByteSource.h"
#include "postscript/level3/streams/Type1Cipher.h"

namespace quillpress::level3 {

// The encrypted part of a font, in binary or in hexadecimal digits, which its first four bytes tell apart.
//
// It has no end-of-data marker: the program in it closes it and goes on with the source, so closing leaves
// the source exactly behind the bytes that have been read here.
class EexecDecoder final : public ByteSource {
 public:
  explicit EexecDecoder(SourcePointer source) : source_(std::move(source)) {}

 private:
  Bytes nextBlock() override;
  void release() override;
  bool readHead(ByteSource& source);
  void decrypt(Bytes input);
  bool decryptHex(Byte byte);
  void deliver(Byte plain, std::size_t consumed);

  static constexpr std::size_t kHeadSize = 4;
  static constexpr std::size_t kRandomBytes = 4;
  static constexpr std::size_t kBlockSize = 4096;

  SourcePointer source_;
  Type1Cipher cipher_{Type1Cipher::kEexecKey};
  std::vector<Byte> head_;
  bool isHex_ = false;
  bool headIsDone_ = false;
  int firstDigit_ = -1;
  std::size_t toSkip_ = kRandomBytes;

  std::vector<Byte> block_;
  // For each byte of the block, how much of the source had been consumed for it since the block began.
  std::vector<std::size_t> consumedFor_;
  std::size_t consumed_ = 0;
  std::uint64_t sourcePosition_ = 0;  // behind the block
};

}  // namespace quillpress::level3
