#pragma once

#include <array>

#include "postscript/level3/text/Face.h"

namespace quillpress::level3 {

// The entries of a face's glyphs that were asked for last, at places that their codes tell: text asks for few
// glyphs, and for each of them often.
template <typename Entry>
class RecentGlyphs {
 public:
  // Null when it has to be looked for elsewhere.
  Entry* find(const GlyphKey& key) const {
    const Place& place = places_[key.code % kPlaces];
    return place.key.code == key.code && place.key.name == key.name ? place.entry : nullptr;
  }

  // The entry must stay where it is.
  Entry& remember(const GlyphKey& key, Entry& entry) {
    places_[key.code % kPlaces] = {key, &entry};
    return entry;
  }

 private:
  static constexpr std::size_t kPlaces = 128;
  struct Place {
    GlyphKey key;
    Entry* entry = nullptr;
  };

  std::array<Place, kPlaces> places_;
};

}  // namespace quillpress::level3
