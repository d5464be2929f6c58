#include "cli/archive/Inks.h"

#include <cstddef>
#include <set>

#include "cli/base/Errors.h"

namespace quillpress::cli {

namespace {

// Places in the array of a space.
constexpr int kNames = 1;
constexpr int kAlternative = 2;
constexpr int kTint = 3;
constexpr int kAttributes = 4;

std::string bytesOf(QPDFObjectHandle stream) {
  const std::shared_ptr<Buffer> data = stream.getStreamData(qpdf_dl_generalized);
  return {reinterpret_cast<const char*>(data->getBuffer()), data->getSize()};
}

// A calculator function of several inks for one of them: the others are none.
std::string calculatorOf(const std::string& calculator, int inks, int ink) {
  std::string zeros;
  for (int before = 0; before < ink; ++before) zeros += "0 exch ";
  for (int after = ink + 1; after < inks; ++after) zeros += "0 ";
  const std::size_t begin = calculator.find('{');
  if (begin == std::string::npos) throw ArchiveError("the colours of several inks");
  return calculator.substr(0, begin + 1) + zeros + calculator.substr(begin + 1);
}

// The samples along one edge of the table. The first ink's vary fastest.
std::string samplesOf(QPDFObjectHandle entries, const std::string& samples, int ink) {
  constexpr std::size_t kBitsInByte = 8;
  const auto bits = static_cast<std::size_t>(entries.getKey("/BitsPerSample").getIntValueAsInt());
  const auto outputs = static_cast<std::size_t>(entries.getKey("/Range").getArrayNItems() / 2);
  QPDFObjectHandle sizes = entries.getKey("/Size");
  if (bits % kBitsInByte != 0) throw ArchiveError("the colours of several inks");
  const std::size_t width = outputs * bits / kBitsInByte;
  std::size_t step = width;
  for (int before = 0; before < ink; ++before)
    step *= static_cast<std::size_t>(sizes.getArrayItem(before).getIntValueAsInt());
  std::string result;
  const int count = sizes.getArrayItem(ink).getIntValueAsInt();
  for (int sample = 0; sample < count; ++sample)
    result += samples.substr(static_cast<std::size_t>(sample) * step, width);
  return result;
}

QPDFObjectHandle tintOf(QPDF& pdf, QPDFObjectHandle tint, int inks, int ink) {
  QPDFObjectHandle entries = tint.getDict();
  const bool isSampled = entries.getKey("/FunctionType").getIntValue() == 0;
  const std::string data = bytesOf(tint);
  QPDFObjectHandle result = QPDFObjectHandle::newStream(
      &pdf, isSampled ? samplesOf(entries, data, ink) : calculatorOf(data, inks, ink));
  QPDFObjectHandle own = result.getDict();
  for (const char* const key : {"/FunctionType", "/Range", "/BitsPerSample"}) {
    if (entries.hasKey(key)) own.replaceKey(key, entries.getKey(key));
  }
  own.replaceKey("/Domain", QPDFObjectHandle::parse("[0 1]"));
  if (isSampled)
    own.replaceKey("/Size", QPDFObjectHandle::newArray({entries.getKey("/Size").getArrayItem(ink)}));
  return result;
}

// The inks of every press need no description.
bool isProcessInk(const std::string& ink) {
  static const std::set<std::string> kInks{"/Cyan", "/Magenta", "/Yellow", "/Black", "/None"};
  return kInks.contains(ink);
}

}  // namespace

void Inks::add(QPDFObjectHandle space) {
  if (space.getArrayNItems() <= kTint) return;
  if (space.getArrayItem(0).isNameAndEquals("/Separation")) single_.push_back(space);
  if (space.getArrayItem(0).isNameAndEquals("/DeviceN")) several_.push_back(space);
}

void Inks::replaceDevice(const std::string& device, const QPDFObjectHandle& space) {
  for (auto* const inks : {&single_, &several_}) {
    for (QPDFObjectHandle& ink : *inks) {
      if (ink.getArrayItem(kAlternative).isNameAndEquals(device)) ink.setArrayItem(kAlternative, space);
    }
  }
}

void Inks::complete(QPDF& pdf, ArchivePart part) {
  if (part == ArchivePart::k1b) return;
  for (QPDFObjectHandle& space : single_) {
    const std::string ink = space.getArrayItem(kNames).getName();
    QPDFObjectHandle& known = looks_.emplace(ink, space).first->second;
    const auto isAlike = [&](int place) {
      return known.getArrayItem(place).unparse() == space.getArrayItem(place).unparse();
    };
    if (!isAlike(kAlternative) || !isAlike(kTint))
      throw ArchiveError("the ink " + ink.substr(1) + ", which has several looks");
  }
  for (QPDFObjectHandle& space : several_) completeSeveral(pdf, space);
}

void Inks::completeSeveral(QPDF& pdf, QPDFObjectHandle space) {
  QPDFObjectHandle names = space.getArrayItem(kNames);
  QPDFObjectHandle looks = QPDFObjectHandle::newDictionary();
  const int inks = names.getArrayNItems();
  for (int ink = 0; ink < inks; ++ink) {
    const std::string key = names.getArrayItem(ink).getName();
    if (isProcessInk(key)) continue;
    if (!looks_.contains(key)) {
      const QPDFObjectHandle tint = tintOf(pdf, space.getArrayItem(kTint), inks, ink);
      looks_.emplace(key, pdf.makeIndirectObject(QPDFObjectHandle::newArray(
                              {QPDFObjectHandle::newName("/Separation"), names.getArrayItem(ink),
                               space.getArrayItem(kAlternative), tint})));
    }
    looks.replaceKey(key, looks_.at(key));
  }
  if (looks.getKeys().empty()) return;
  QPDFObjectHandle attributes = QPDFObjectHandle::newDictionary();
  attributes.replaceKey("/Colorants", looks);
  if (space.getArrayNItems() > kAttributes) {
    space.setArrayItem(kAttributes, attributes);
  } else {
    space.appendItem(attributes);
  }
}

}  // namespace quillpress::cli
