#include "cli/conversion/TextCounter.h"

#include <charconv>

namespace quillpress::cli {

namespace {

// The count is the one element of an array, changed in place. Everything is bound at once with //, so that
// nothing that the job defines can get between. A stand-in is an executable name and not the procedure
// itself, since a procedure inside a procedure would be pushed where an operator would run: a job may put
// an operator into its procedures with // or load. Last come the built-in abbreviations, which hold the
// operators themselves.
constexpr std::string_view kStandIns = R"(
systemdict begin
/quillpress.texts [0] def
/quillpress.report {//quillpress.texts 0 //get //setlinewidth} def
/quillpress.show {//quillpress.texts 0 //quillpress.texts 0 //get 1 //add //put //show} def
/quillpress.ashow {//quillpress.texts 0 //quillpress.texts 0 //get 1 //add //put //ashow} def
/quillpress.widthshow {//quillpress.texts 0 //quillpress.texts 0 //get 1 //add //put //widthshow} def
/quillpress.awidthshow {//quillpress.texts 0 //quillpress.texts 0 //get 1 //add //put //awidthshow} def
/quillpress.kshow {//quillpress.texts 0 //quillpress.texts 0 //get 1 //add //put //kshow} def
/quillpress.cshow {//quillpress.texts 0 //quillpress.texts 0 //get 1 //add //put //cshow} def
/quillpress.glyphshow {//quillpress.texts 0 //quillpress.texts 0 //get 1 //add //put //glyphshow} def
/quillpress.xshow {//quillpress.texts 0 //quillpress.texts 0 //get 1 //add //put //xshow} def
/quillpress.yshow {//quillpress.texts 0 //quillpress.texts 0 //get 1 //add //put //yshow} def
/quillpress.xyshow {//quillpress.texts 0 //quillpress.texts 0 //get 1 //add //put //xyshow} def
/show /quillpress.show cvx def
/ashow /quillpress.ashow cvx def
/widthshow /quillpress.widthshow cvx def
/awidthshow /quillpress.awidthshow cvx def
/kshow /quillpress.kshow cvx def
/cshow /quillpress.cshow cvx def
/glyphshow /quillpress.glyphshow cvx def
/xshow /quillpress.xshow cvx def
/yshow /quillpress.yshow cvx def
/xyshow /quillpress.xyshow cvx def
end
/S /show load def
/A /ashow load def
/W /widthshow load def
/D /awidthshow load def
)";

constexpr std::string_view kReport = "\nquillpress.report\n";
constexpr std::string_view kLineWidth = " w ";

}  // namespace

void TextCounter::install(Converter& converter) {
  converter.convert(kStandIns);
}

std::optional<std::uint64_t> TextCounter::read(Converter& converter) {
  // A line width is the plainest operator that brings a number into page content.
  const auto answer = converter.convert(kReport);
  if (!answer) return std::nullopt;
  std::uint64_t count = 0;
  const char* const last = answer->data() + answer->size();
  const auto [end, error] = std::from_chars(answer->data(), last, count);
  // Anything else is content of the job itself, which has gone on with what it was in the middle of.
  if (error != std::errc() || std::string_view(end, last) != kLineWidth) return std::nullopt;
  return count;
}

}  // namespace quillpress::cli
