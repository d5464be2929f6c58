#include <algorithm>
#include <cstring>

#include "postscript/level3/streams/DctFilter.h"
#include "postscript/level3/streams/JpegErrors.h"

namespace quillpress::level3 {

namespace {

// Progressive data is held as a whole before the first row comes, in two bytes a sample.
constexpr std::uint64_t kMostProgressiveSamples = 256U << 20;
// Scans that add next to nothing cost a whole pass each.
constexpr int kMostScans = 500;

}  // namespace

// The library takes what there is and stops when it needs more; the bytes that it has not taken are kept,
// with more behind them the next time.
struct DctDecoder::State {
  enum class Step { kHeader, kStart, kRows, kFinish, kDone };

  explicit State(std::optional<bool> transform) : colorTransform(transform) {}

  JpegErrors errors{};
  jpeg_decompress_struct info{};
  jpeg_source_mgr source{};
  jpeg_progress_mgr progress{};
  std::vector<Byte> held;
  std::size_t toSkip = 0;  // of what has yet to come
  std::vector<Byte> row;
  std::size_t rowDelivered = 0;  // of `row`
  Step step = Step::kHeader;
  std::optional<bool> colorTransform;

  void create();
  bool run();
  bool takeHeader();
  void chooseColours();
};

void DctDecoder::State::create() {
  info.err = JpegErrors::install(errors);
  jpeg_create_decompress(&info);
  info.client_data = this;
  info.src = &source;
  source.init_source = [](j_decompress_ptr) {};
  source.term_source = [](j_decompress_ptr) {};
  source.fill_input_buffer = [](j_decompress_ptr) { return boolean{FALSE}; };
  source.resync_to_restart = jpeg_resync_to_restart;
  source.skip_input_data = [](j_decompress_ptr decompress, long count) {
    if (count <= 0) return;
    auto& state = *static_cast<State*>(decompress->client_data);
    const std::size_t skipped = std::min(static_cast<std::size_t>(count), decompress->src->bytes_in_buffer);
    decompress->src->next_input_byte += skipped;
    decompress->src->bytes_in_buffer -= skipped;
    state.toSkip += static_cast<std::size_t>(count) - skipped;
  };
  info.progress = &progress;
  progress.progress_monitor = [](j_common_ptr common) {
    const auto* const decompress = reinterpret_cast<j_decompress_ptr>(common);
    if (decompress->input_scan_number > kMostScans) common->err->error_exit(common);
  };
}

// Without the maker's marker the parameter says what the components are.
void DctDecoder::State::chooseColours() {
  if (!info.saw_Adobe_marker) {
    if (info.num_components == 3) info.jpeg_color_space = colorTransform.value_or(true) ? JCS_YCbCr : JCS_RGB;
    if (info.num_components == 4)
      info.jpeg_color_space = colorTransform.value_or(false) ? JCS_YCCK : JCS_CMYK;
  }
  if (info.num_components == 1) info.out_color_space = JCS_GRAYSCALE;
  if (info.num_components == 3) info.out_color_space = JCS_RGB;
  if (info.num_components == 4) info.out_color_space = JCS_CMYK;
}

bool DctDecoder::State::takeHeader() {
  if (jpeg_read_header(&info, TRUE) == JPEG_SUSPENDED) return false;
  chooseColours();
  const std::uint64_t samples =
      std::uint64_t{info.image_width} * info.image_height * static_cast<std::uint64_t>(info.num_components);
  if (jpeg_has_multiple_scans(&info) && samples > kMostProgressiveSamples) {
    info.err->error_exit(reinterpret_cast<j_common_ptr>(&info));
  }
  return true;
}

// Goes on until a row is there, all is done, or more data is needed. False for bad data. Nothing here but the
// library's own calls, because its errors jump out of them.
bool DctDecoder::State::run() {
  if (setjmp(errors.back) != 0) return false;
  if (step == Step::kHeader) {
    if (!takeHeader()) return true;
    step = Step::kStart;
  }
  if (step == Step::kStart) {
    if (!jpeg_start_decompress(&info)) return true;
    step = Step::kRows;
  }
  if (step == Step::kRows) {
    if (info.output_scanline < info.output_height) {
      const std::size_t size =
          std::size_t{info.output_width} * static_cast<std::size_t>(info.output_components);
      if (row.size() != size) row.resize(size);
      JSAMPROW target = row.data();
      rowDelivered = jpeg_read_scanlines(&info, &target, 1) == 1 ? 0 : size;
      return true;
    }
    step = Step::kFinish;
  }
  if (step == Step::kFinish && jpeg_finish_decompress(&info)) step = Step::kDone;
  return true;
}

DctDecoder::DctDecoder(SourcePointer source, std::optional<bool> colorTransform, FilterClosing closing)
    : Decoder(std::move(source), closing), state_(std::make_unique<State>(colorTransform)) {
  state_->create();
}

DctDecoder::~DctDecoder() {
  jpeg_destroy_decompress(&state_->info);
}

std::optional<DctFrame> DctDecoder::frame() const {
  if (state_->step == State::Step::kHeader) return std::nullopt;
  return DctFrame{static_cast<int>(state_->info.image_width), static_cast<int>(state_->info.image_height),
                  state_->info.num_components};
}

std::optional<bool> DctDecoder::colorTransform() const {
  return state_->colorTransform;
}

std::size_t DctDecoder::deliver(std::span<Byte> output) {
  const std::size_t count = std::min(output.size(), state_->row.size() - state_->rowDelivered);
  if (count > 0) std::memcpy(output.data(), state_->row.data() + state_->rowDelivered, count);
  state_->rowDelivered += count;
  return count;
}

Decoder::Progress DctDecoder::decode(Bytes input, std::span<Byte> output) {
  State& state = *state_;
  Progress step;
  step.produced = deliver(output);
  if (state.rowDelivered < state.row.size()) return step;

  step.consumed = std::min(state.toSkip, input.size());
  state.toSkip -= step.consumed;
  const Bytes fresh = input.subspan(step.consumed);
  step.consumed = input.size();
  state.held.insert(state.held.end(), fresh.begin(), fresh.end());
  state.source.next_input_byte = state.held.data();
  state.source.bytes_in_buffer = state.held.size();
  bool goesOn = true;
  while (goesOn && isOpen() && state.rowDelivered == state.row.size()) {
    const std::size_t before = state.source.bytes_in_buffer;
    const unsigned rowsBefore = state.info.output_scanline;
    if (!state.run()) fail();
    if (state.step == State::Step::kDone) finish();
    step.produced += deliver(output.subspan(step.produced));
    goesOn = state.source.bytes_in_buffer != before || state.info.output_scanline != rowsBefore;
  }
  // What is left behind the end of the image came with this input, and stays unread.
  if (!isOpen()) step.consumed -= std::min(step.consumed, state.source.bytes_in_buffer);
  state.held.erase(state.held.begin(),
                   state.held.end() - static_cast<std::ptrdiff_t>(state.source.bytes_in_buffer));
  return step;
}

// Data that is cut gets an end: what could be decoded is delivered, with grey for the rest.
std::size_t DctDecoder::decodeEnd(std::span<Byte> output) {
  static constexpr std::array<Byte, 2> kEndOfImage = {0xFF, JPEG_EOI};
  if (state_->step == State::Step::kHeader) {
    fail();
    return 0;
  }
  state_->toSkip = 0;
  const Progress step = decode(kEndOfImage, output);
  if (step.produced == 0 && isOpen()) finish();
  return step.produced;
}

}  // namespace quillpress::level3
