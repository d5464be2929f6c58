#include "postscript/level3/colour/IccProfile.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>

#include "postscript/level3/colour/ProfileBytes.h"

namespace quillpress::level3 {

namespace {

struct CurveDeleter {
  void operator()(cmsToneCurve* curve) const { cmsFreeToneCurve(curve); }
};
using ToneCurve = std::unique_ptr<cmsToneCurve, CurveDeleter>;

struct PipelineDeleter {
  void operator()(cmsPipeline* pipeline) const { cmsPipelineFree(pipeline); }
};
using Pipeline = std::unique_ptr<cmsPipeline, PipelineDeleter>;

Profile newProfile(cmsProfileClassSignature kind, cmsColorSpaceSignature space,
                   cmsColorSpaceSignature connection) {
  Profile profile = required(Profile(cmsCreateProfilePlaceholder(nullptr)));
  cmsSetDeviceClass(profile.get(), kind);
  cmsSetColorSpace(profile.get(), space);
  cmsSetPCS(profile.get(), connection);
  describe(profile, "CIE-based colour");
  cmsWriteTag(profile.get(), cmsSigMediaWhitePointTag, cmsD50_XYZ());
  return profile;
}

ToneCurve curveOf(std::span<const double> values) {
  std::vector<std::uint16_t> table;
  for (const double value : values) {
    table.push_back(static_cast<std::uint16_t>(std::lround(std::clamp(value, 0.0, 1.0) * 65535)));
  }
  return required(ToneCurve(
      cmsBuildTabulatedToneCurve16(nullptr, static_cast<cmsUInt32Number>(table.size()), table.data())));
}

cmsCIEXYZ adapted(const Xyz& colour, const Xyz& white) {
  const cmsCIEXYZ source{colour[0], colour[1], colour[2]};
  const cmsCIEXYZ from{white[0], white[1], white[2]};
  cmsCIEXYZ result;
  if (!cmsAdaptToIlluminant(&result, &from, cmsD50_XYZ(), &source)) return source;
  return result;
}

struct Sampler {
  std::size_t channels;
  const Xyz& white;
  const std::function<Xyz(std::span<const double>)>& colourOf;
};

cmsInt32Number sample(const cmsUInt16Number* in, cmsUInt16Number* out, void* cargo) {
  const auto& sampler = *static_cast<const Sampler*>(cargo);
  std::array<double, 4> channels{};
  for (std::size_t index = 0; index < sampler.channels; ++index) channels[index] = in[index] / 65535.0;
  const Xyz colour = sampler.colourOf({channels.data(), sampler.channels});
  const cmsCIEXYZ xyz = adapted(colour, sampler.white);
  cmsCIELab lab;
  cmsXYZ2Lab(nullptr, &lab, &xyz);
  cmsFloat2LabEncodedV2(out, &lab);
  return 1;
}

}  // namespace

std::string grayProfile(std::span<const double> luminance) {
  const Profile profile = newProfile(cmsSigDisplayClass, cmsSigGrayData, cmsSigXYZData);
  cmsWriteTag(profile.get(), cmsSigGrayTRCTag, curveOf(luminance).get());
  return bytesOf(profile);
}

std::string matrixProfile(const std::array<std::vector<double>, 3>& curves, const std::array<Xyz, 3>& colours,
                          const Xyz& white) {
  const Profile profile = newProfile(cmsSigDisplayClass, cmsSigRgbData, cmsSigXYZData);
  constexpr std::array<cmsTagSignature, 3> kCurveTags{cmsSigRedTRCTag, cmsSigGreenTRCTag, cmsSigBlueTRCTag};
  constexpr std::array<cmsTagSignature, 3> kColourTags{cmsSigRedColorantTag, cmsSigGreenColorantTag,
                                                       cmsSigBlueColorantTag};
  for (std::size_t channel = 0; channel < 3; ++channel) {
    cmsWriteTag(profile.get(), kCurveTags[channel], curveOf(curves[channel]).get());
    const cmsCIEXYZ colour = adapted(colours[channel], white);
    cmsWriteTag(profile.get(), kColourTags[channel], &colour);
  }
  return bytesOf(profile);
}

std::string sampledProfile(std::size_t channels, const Xyz& white,
                           const std::function<Xyz(std::span<const double>)>& colourOf) {
  constexpr std::array<cmsColorSpaceSignature, 4> kSpaces{cmsSigGrayData, cmsSigGrayData, cmsSigRgbData,
                                                          cmsSigCmykData};
  constexpr std::array<cmsUInt32Number, 4> kGrid{255, 33, 17, 9};
  const Profile profile = newProfile(channels == 4 ? cmsSigOutputClass : cmsSigDisplayClass,
                                     kSpaces[channels - 1], cmsSigLabData);
  const Pipeline pipeline(required(cmsPipelineAlloc(nullptr, static_cast<cmsUInt32Number>(channels), 3)));
  cmsStage* const grid = required(cmsStageAllocCLut16bit(nullptr, kGrid[channels - 1],
                                                         static_cast<cmsUInt32Number>(channels), 3, nullptr));
  Sampler sampler{channels, white, colourOf};
  cmsStageSampleCLut16bit(grid, sample, &sampler, 0);
  // The form that is kept in profiles has curves on both sides.
  cmsStage* const before =
      required(cmsStageAllocToneCurves(nullptr, static_cast<cmsUInt32Number>(channels), nullptr));
  cmsStage* const after = required(cmsStageAllocToneCurves(nullptr, 3, nullptr));
  for (cmsStage* const stage : {before, grid, after})
    cmsPipelineInsertStage(pipeline.get(), cmsAT_END, stage);
  cmsWriteTag(profile.get(), cmsSigAToB0Tag, pipeline.get());
  return bytesOf(profile);
}

}  // namespace quillpress::level3
