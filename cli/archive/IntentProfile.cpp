#include "cli/archive/IntentProfile.h"

#include <array>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <memory>

#include "cli/base/Errors.h"
#include "cli/system/Paths.h"
#include "postscript/level3/colour/ProfileBytes.h"

namespace quillpress::cli {

namespace {

using level3::bytesOf;
using level3::describe;
using level3::Profile;
using level3::required;

struct PipelineDeleter {
  void operator()(cmsPipeline* pipeline) const { cmsPipelineFree(pipeline); }
};

constexpr std::size_t kInks = 4;

// What inks look like that cover the paper wholly, alone and one over the other, in sRGB: a coated sheet of
// an offset press. Cyan counts 8, magenta 4, yellow 2, black 1.
using Rgb = std::array<double, 3>;
constexpr std::array<Rgb, 16> kOverprints{{{1, 1, 1},
                                           {0.1373, 0.1216, 0.1255},
                                           {1, 0.9490, 0},
                                           {0.1098, 0.1020, 0},
                                           {0.9255, 0, 0.5490},
                                           {0.1412, 0, 0},
                                           {0.9294, 0.1098, 0.1412},
                                           {0.1333, 0, 0},
                                           {0, 0.6784, 0.9373},
                                           {0, 0.0588, 0.1412},
                                           {0, 0.6510, 0.3137},
                                           {0, 0.0745, 0},
                                           {0.1804, 0.1922, 0.5725},
                                           {0, 0, 0.0078},
                                           {0.2118, 0.2119, 0.2235},
                                           {0, 0, 0}}};

// Of each combination of inks as much is seen as of the paper has it, when the dots of inks fall at random.
Rgb colourOf(const std::array<double, kInks>& inks) {
  Rgb colour{};
  for (std::size_t combination = 0; combination < kOverprints.size(); ++combination) {
    double share = 1;
    for (std::size_t ink = 0; ink < kInks; ++ink) {
      const bool isThere = (combination >> (kInks - 1 - ink) & 1U) != 0;
      share *= isThere ? inks[ink] : 1 - inks[ink];
    }
    for (std::size_t channel = 0; channel < colour.size(); ++channel)
      colour[channel] += share * kOverprints[combination][channel];
  }
  return colour;
}

struct TransformDeleter {
  void operator()(void* transform) const { cmsDeleteTransform(transform); }
};

cmsInt32Number sampleInks(const cmsUInt16Number* in, cmsUInt16Number* out, void* toLab) {
  constexpr double kMost = 65535;
  std::array<double, kInks> inks{};
  for (std::size_t ink = 0; ink < kInks; ++ink) inks[ink] = in[ink] / kMost;
  const Rgb colour = colourOf(inks);
  cmsCIELab lab;
  cmsDoTransform(toLab, colour.data(), &lab, 1);
  cmsFloat2LabEncodedV2(out, &lab);
  return 1;
}

[[noreturn]] void refuse(const std::string& file, const std::string& complaint) {
  throw UsageError("--output-intent: \"" + file + "\" " + complaint);
}

int componentsOf(cmsColorSpaceSignature space) {
  if (space == cmsSigGrayData) return 1;
  if (space == cmsSigRgbData) return 3;
  return space == cmsSigCmykData ? 4 : 0;
}

std::string descriptionOf(const Profile& profile) {
  constexpr std::size_t kLongest = 200;
  std::array<char, kLongest> text{};
  cmsGetProfileInfoASCII(profile.get(), cmsInfoDescription, "en", "US", text.data(), kLongest);
  std::string plain;
  for (const char* character = text.data(); *character != '\0'; ++character) {
    if (*character >= ' ' && *character < 0x7F) plain += *character;
  }
  return plain.empty() ? "Custom" : plain;
}

}  // namespace

IntentProfile standardIntent() {
  const Profile profile = required(Profile(cmsCreate_sRGBProfile()));
  describe(profile, "sRGB IEC61966-2.1");
  return {bytesOf(profile), "sRGB IEC61966-2.1", 3};
}

IntentProfile readIntent(const std::string& file, ArchivePart part) {
  std::ifstream stream(pathOf(file), std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
  if (!stream.is_open() || stream.bad()) refuse(file, "cannot be read");
  cmsSetLogErrorHandler(nullptr);
  const Profile profile(cmsOpenProfileFromMem(bytes.data(), static_cast<cmsUInt32Number>(bytes.size())));
  if (!profile) refuse(file, "is no ICC profile");
  const cmsProfileClassSignature kind = cmsGetDeviceClass(profile.get());
  if (kind != cmsSigDisplayClass && kind != cmsSigOutputClass) {
    refuse(file, "is a profile of neither a screen nor a printer");
  }
  const int components = componentsOf(cmsGetColorSpace(profile.get()));
  if (components == 0) refuse(file, "is a profile for neither gray nor RGB nor CMYK");
  const double newest = part == ArchivePart::k1b ? 3 : 5;
  if (cmsGetProfileVersion(profile.get()) >= newest) {
    refuse(file, std::string("is a profile of a later version than ") + nameOf(part) + " takes");
  }
  return {bytes, descriptionOf(profile), components};
}

std::string pressProfile() {
  const Profile rgb = required(Profile(cmsCreate_sRGBProfile()));
  const Profile lab = required(Profile(cmsCreateLab4Profile(nullptr)));
  const std::unique_ptr<void, TransformDeleter> toLab(
      required(cmsCreateTransform(rgb.get(), TYPE_RGB_DBL, lab.get(), TYPE_Lab_DBL,
                                  INTENT_RELATIVE_COLORIMETRIC, cmsFLAGS_NOCACHE | cmsFLAGS_NOOPTIMIZE)));
  const Profile profile = required(Profile(cmsCreateProfilePlaceholder(nullptr)));
  cmsSetDeviceClass(profile.get(), cmsSigOutputClass);
  cmsSetColorSpace(profile.get(), cmsSigCmykData);
  cmsSetPCS(profile.get(), cmsSigLabData);
  describe(profile, "Four inks on coated paper");
  cmsWriteTag(profile.get(), cmsSigMediaWhitePointTag, cmsD50_XYZ());
  const std::unique_ptr<cmsPipeline, PipelineDeleter> pipeline(required(cmsPipelineAlloc(nullptr, kInks, 3)));
  constexpr cmsUInt32Number kGrid = 9;
  cmsStage* const grid = required(cmsStageAllocCLut16bit(nullptr, kGrid, kInks, 3, nullptr));
  cmsStageSampleCLut16bit(grid, sampleInks, toLab.get(), 0);
  cmsPipelineInsertStage(pipeline.get(), cmsAT_END, grid);
  cmsWriteTag(profile.get(), cmsSigAToB0Tag, pipeline.get());
  return bytesOf(profile);
}

}  // namespace quillpress::cli
