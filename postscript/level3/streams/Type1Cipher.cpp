#include "postscript/level3/streams/Type1Cipher.h"

namespace quillpress::level3 {

std::optional<std::vector<Byte>> decryptCharstring(Bytes cipher, int randomBytes) {
  if (randomBytes < 0) return std::vector<Byte>(cipher.begin(), cipher.end());
  const auto skipped = static_cast<std::size_t>(randomBytes);
  if (cipher.size() < skipped) return std::nullopt;
  Type1Cipher state(Type1Cipher::kCharstringKey);
  for (const Byte byte : cipher.first(skipped)) state.decrypt(byte);
  std::vector<Byte> plain;
  plain.reserve(cipher.size() - skipped);
  for (const Byte byte : cipher.subspan(skipped)) plain.push_back(state.decrypt(byte));
  return plain;
}

std::vector<Byte> encryptCharstring(Bytes plain, int randomBytes) {
  if (randomBytes < 0) return {plain.begin(), plain.end()};
  Type1Cipher state(Type1Cipher::kCharstringKey);
  std::vector<Byte> cipher;
  cipher.reserve(plain.size() + static_cast<std::size_t>(randomBytes));
  for (int i = 0; i < randomBytes; ++i) cipher.push_back(state.encrypt(0));
  for (const Byte byte : plain) cipher.push_back(state.encrypt(byte));
  return cipher;
}

}  // namespace quillpress::level3
