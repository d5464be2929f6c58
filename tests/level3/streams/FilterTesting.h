#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <ostream>
#include <random>
#include <string>

#include "postscript/level3/streams/CallbackStreams.h"
#include "postscript/level3/streams/MemoryStreams.h"

namespace quillpress::level3 {

using MakeDecoder = std::function<SourcePointer(SourcePointer)>;
using MakeEncoder = std::function<SinkPointer(SinkPointer)>;

// What a decoder made of its data: all that it delivered, how it ended, and what it left unread.
struct Decoded {
  std::string text;
  StreamState state = StreamState::kOpen;
  std::string unread;

  friend bool operator==(const Decoded&, const Decoded&) = default;
  friend std::ostream& operator<<(std::ostream& out, const Decoded& decoded) {
    return out << '"' << decoded.text << "\" ends as " << static_cast<int>(decoded.state) << ", unread: \""
               << decoded.unread << '"';
  }
};

// A source that hands out its text in pieces of `size` bytes.
inline SourcePointer inPieces(std::string text, std::size_t size) {
  return std::make_shared<PieceSource>(
      [text = std::move(text), size, next = std::size_t{0}]() mutable -> std::optional<Bytes> {
        const Bytes piece = bytesOf(std::string_view(text).substr(next, size));
        next += piece.size();
        return piece;
      });
}

inline std::string readAll(ByteSource& source) {
  std::string text;
  while (source.refill()) {
    text += textOf(source.peek());
    source.dropBuffered();
  }
  return text;
}

inline Decoded decodeInPieces(const MakeDecoder& make, const std::string& data, std::size_t size) {
  const SourcePointer source = inPieces(data, size);
  const SourcePointer decoder = make(source);
  Decoded decoded;
  decoded.text = readAll(*decoder);
  decoded.state = decoder->state();
  decoded.unread = readAll(*source);
  return decoded;
}

// Decodes `data` as a whole and cut into pieces of several sizes: the cuts must not matter.
inline Decoded decodeText(const MakeDecoder& make, const std::string& data) {
  Decoded whole = decodeInPieces(make, data, std::max<std::size_t>(data.size(), 1));
  for (const std::size_t size : {1, 2, 3, 5, 64, 1000}) {
    const Decoded cut = decodeInPieces(make, data, size);
    EXPECT_EQ(cut.text, whole.text) << "in pieces of " << size;
    EXPECT_EQ(cut.state, whole.state) << "in pieces of " << size;
    // After an error it does not matter how much of the rest has been looked at.
    if (whole.state != StreamState::kEnd) continue;
    EXPECT_EQ(cut.unread, whole.unread) << "in pieces of " << size;
  }
  return whole;
}

inline Decoded ended(std::string text, std::string unread = "") {
  return {std::move(text), StreamState::kEnd, std::move(unread)};
}

inline std::string encodeInPieces(const MakeEncoder& make, const std::string& data, std::size_t size) {
  const auto target = std::make_shared<MemorySink>();
  const SinkPointer encoder = make(target);
  for (std::size_t start = 0; start < data.size(); start += size) {
    EXPECT_TRUE(encoder->write(bytesOf(std::string_view(data).substr(start, size))));
  }
  EXPECT_TRUE(encoder->close());
  return std::string(textOf(target->bytes()));
}

// Encodes `data` as a whole and cut into pieces of several sizes: the cuts must not matter.
inline std::string encodeText(const MakeEncoder& make, const std::string& data) {
  std::string whole = encodeInPieces(make, data, std::max<std::size_t>(data.size(), 1));
  for (const std::size_t size : {1, 3, 1000}) {
    EXPECT_EQ(encodeInPieces(make, data, size), whole) << "in pieces of " << size;
  }
  return whole;
}

// Data of several kinds and lengths: none, constant, counting, random, sparse and repeating.
inline std::vector<std::string> assortedData() {
  std::vector<std::string> all = {"", "a", "ab", std::string(3, 'a'), std::string(40000, '\0')};
  std::mt19937 random(12345);
  for (const std::size_t size : {4, 5, 127, 128, 129, 5000, 20000}) {
    std::string counting;
    std::string noise;
    std::string sparse;
    for (std::size_t i = 0; i < size; ++i) {
      counting += static_cast<char>(i);
      noise += static_cast<char>(random());
      sparse += random() % 8 == 0 ? static_cast<char>(random() % 4) : '\0';
    }
    all.insert(all.end(), {counting, noise, sparse});
  }
  return all;
}

// What is encoded comes back, with the end-of-data marker gone and what follows it unread.
inline void expectRoundTrips(const MakeEncoder& encoder, const MakeDecoder& decoder) {
  for (const std::string& data : assortedData()) {
    const std::string encoded = encodeText(encoder, data);
    const Decoded decoded = decodeText(decoder, encoded + "rest");
    EXPECT_TRUE(decoded.text == data) << "data of " << data.size() << " bytes is not the same";
    EXPECT_EQ(decoded.state, StreamState::kEnd);
    EXPECT_EQ(decoded.unread, "rest");
  }
}

// Whatever stands in the data, a decoder comes to an end without harm.
inline void expectSurvivesDamage(const MakeDecoder& make, const std::string& data) {
  std::mt19937 random(54321);
  for (int round = 0; round < 300; ++round) {
    std::string damaged = data.substr(0, random() % (data.size() + 1));
    for (int i = 0; i < 3 && !damaged.empty(); ++i)
      damaged[random() % damaged.size()] = static_cast<char>(random());
    const Decoded decoded = decodeInPieces(make, damaged, 1 + random() % 100);
    EXPECT_NE(decoded.state, StreamState::kOpen);
  }
}

template <typename Filter, typename... Parameters>
MakeDecoder decoderOf(Parameters... parameters) {
  return [parameters...](SourcePointer source) {
    return std::make_shared<Filter>(std::move(source), parameters...);
  };
}

template <typename Filter, typename... Parameters>
MakeEncoder encoderOf(Parameters... parameters) {
  return [parameters...](SinkPointer target) {
    return std::make_shared<Filter>(std::move(target), parameters...);
  };
}

}  // namespace quillpress::level3
