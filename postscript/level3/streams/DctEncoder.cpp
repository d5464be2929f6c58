#include <algorithm>
#include <cmath>

#include "postscript/level3/streams/DctFilter.h"
#include "postscript/level3/streams/JpegErrors.h"

namespace quillpress::level3 {

namespace {

constexpr std::size_t kOutputBlock = 4096;

J_COLOR_SPACE inputSpace(int colors) {
  switch (colors) {
    case 1:
      return JCS_GRAYSCALE;
    case 3:
      return JCS_RGB;
    case 4:
      return JCS_CMYK;
    default:
      return JCS_UNKNOWN;
  }
}

J_COLOR_SPACE codedSpace(const DctParameters& parameters) {
  if (parameters.colors == 3) return parameters.colorTransform.value_or(true) ? JCS_YCbCr : JCS_RGB;
  if (parameters.colors == 4) return parameters.colorTransform.value_or(false) ? JCS_YCCK : JCS_CMYK;
  return inputSpace(parameters.colors);
}

void setHuffTable(jpeg_compress_struct& info, JHUFF_TBL*& table, const DctParameters::HuffTable& values) {
  if (table == nullptr) table = jpeg_alloc_huff_table(reinterpret_cast<j_common_ptr>(&info));
  table->bits[0] = 0;
  std::copy(values.counts.begin(), values.counts.end(), table->bits + 1);
  std::fill(std::begin(table->huffval), std::end(table->huffval), UINT8{0});
  std::copy_n(values.values.begin(), std::min(values.values.size(), std::size(table->huffval)),
              table->huffval);
  table->sent_table = FALSE;
}

}  // namespace

struct DctEncoder::State {
  explicit State(const DctParameters& given) : parameters(given) {}

  JpegErrors errors{};
  jpeg_compress_struct info{};
  jpeg_destination_mgr destination{};
  DctParameters parameters;
  std::vector<Byte> written = std::vector<Byte>(kOutputBlock);  // the library writes into it, and it grows
  std::vector<Byte> row;
  bool started = false;

  void create();
  void configure();
  void setTables();
  bool writeRow();
  bool finish();
  [[nodiscard]] std::size_t writtenSize() const { return written.size() - destination.free_in_buffer; }
  void startBlock() {
    destination.next_output_byte = written.data();
    destination.free_in_buffer = written.size();
  }
};

void DctEncoder::State::create() {
  info.err = JpegErrors::install(errors);
  jpeg_create_compress(&info);
  info.client_data = this;
  info.dest = &destination;
  destination.init_destination = [](j_compress_ptr) {};
  destination.term_destination = [](j_compress_ptr) {};
  destination.empty_output_buffer = [](j_compress_ptr compress) {
    auto& state = *static_cast<State*>(compress->client_data);
    const std::size_t full = state.written.size();
    state.written.resize(2 * full);
    state.destination.next_output_byte = state.written.data() + full;
    state.destination.free_in_buffer = full;
    return boolean{TRUE};
  };
  startBlock();
}

void DctEncoder::State::configure() {
  info.image_width = static_cast<JDIMENSION>(parameters.columns);
  info.image_height = static_cast<JDIMENSION>(parameters.rows);
  info.input_components = parameters.colors;
  info.in_color_space = inputSpace(parameters.colors);
  jpeg_set_defaults(&info);
  jpeg_set_colorspace(&info, codedSpace(parameters));
  info.write_JFIF_header = FALSE;
  info.write_Adobe_marker = parameters.colors >= 3 ? TRUE : FALSE;
  jpeg_set_linear_quality(
      &info, static_cast<int>(std::lround(std::clamp(parameters.qFactor, 0.0, 100.0) * 100)), TRUE);
  for (std::size_t i = 0; i < static_cast<std::size_t>(parameters.colors); ++i) {
    info.comp_info[i].h_samp_factor = parameters.horizontalSamples[i];
    info.comp_info[i].v_samp_factor = parameters.verticalSamples[i];
  }
  setTables();
}

void DctEncoder::State::setTables() {
  for (std::size_t i = 0; i < parameters.quantTables.size(); ++i) {
    DctParameters::QuantTable natural{};
    for (std::size_t k = 0; k < natural.size(); ++k) {
      // From zigzag order, along the diagonals, to rows.
      static constexpr std::array<Byte, 64> kNaturalOrder = {
          0,  1,  8,  16, 9,  2,  3,  10, 17, 24, 32, 25, 18, 11, 4,  5,  12, 19, 26, 33, 40, 48,
          41, 34, 27, 20, 13, 6,  7,  14, 21, 28, 35, 42, 49, 56, 57, 50, 43, 36, 29, 22, 15, 23,
          30, 37, 44, 51, 58, 59, 52, 45, 38, 31, 39, 46, 53, 60, 61, 54, 47, 55, 62, 63};
      natural[kNaturalOrder[k]] = parameters.quantTables[i][k];
    }
    jpeg_add_quant_table(&info, static_cast<int>(i), natural.data(),
                         static_cast<int>(std::lround(std::clamp(parameters.qFactor, 0.0, 100.0) * 100)),
                         TRUE);
    info.comp_info[i].quant_tbl_no = static_cast<int>(i);
  }
  for (std::size_t i = 0; i < parameters.huffTables.size() / 2; ++i) {
    setHuffTable(info, info.dc_huff_tbl_ptrs[i], parameters.huffTables[2 * i]);
    setHuffTable(info, info.ac_huff_tbl_ptrs[i], parameters.huffTables[2 * i + 1]);
    info.comp_info[i].dc_tbl_no = static_cast<int>(i);
    info.comp_info[i].ac_tbl_no = static_cast<int>(i);
  }
}

// False for parameters that the library refuses. Errors jump out of the library's calls.
bool DctEncoder::State::writeRow() {
  if (setjmp(errors.back) != 0) return false;
  if (!started) {
    started = true;
    configure();
    jpeg_start_compress(&info, TRUE);
  }
  JSAMPROW samples = row.data();
  jpeg_write_scanlines(&info, &samples, 1);
  return true;
}

bool DctEncoder::State::finish() {
  if (setjmp(errors.back) != 0) return false;
  jpeg_finish_compress(&info);
  return true;
}

DctEncoder::DctEncoder(SinkPointer target, const DctParameters& parameters, FilterClosing closing)
    : Encoder(std::move(target), closing), state_(std::make_unique<State>(parameters)) {
  state_->create();
}

DctEncoder::~DctEncoder() {
  jpeg_destroy_compress(&state_->info);
}

bool DctEncoder::isComplete() const {
  return state_->started && state_->info.next_scanline == state_->info.image_height;
}

void DctEncoder::encode(Bytes bytes) {
  State& state = *state_;
  const std::size_t size =
      static_cast<std::size_t>(state.parameters.columns) * static_cast<std::size_t>(state.parameters.colors);
  while (!bytes.empty() && isOpen()) {
    if (isComplete()) return fail();
    const std::size_t count = std::min(bytes.size(), size - state.row.size());
    state.row.insert(state.row.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
    bytes = bytes.subspan(count);
    if (state.row.size() < size) return;
    if (!state.writeRow()) return fail();
    state.row.clear();
    emit(Bytes(state.written).first(state.writtenSize()));
    state.startBlock();
  }
}

void DctEncoder::encodeEnd() {
  if (!isComplete() || !state_->finish()) return fail();
  emit(Bytes(state_->written).first(state_->writtenSize()));
}

}  // namespace quillpress::level3
