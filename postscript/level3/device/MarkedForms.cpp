#include "postscript/level3/device/MarkedForms.h"

#include "postscript/level3/graphics/MatrixOperands.h"

namespace quillpress::level3 {

namespace {

constexpr std::size_t kMostWithinOthers = 16;

}  // namespace

void MarkedForms::begin(std::string_view name, const Box& box) {
  if (open_.size() >= kMostWithinOthers) raise(ErrorName::kLimitCheck);
  const GraphicsState& state = graphics_.state();
  Open open;
  open.name = name;
  open.box = box;
  const ContentWriter::Settings settings{inverseOf(state.ctm), transformed(box, state.ctm), false};
  open.content = std::make_unique<ContentWriter>(graphics_.document().file(), settings);
  open.canvas = state.device->canvas;
  open.outer = open.canvas->redirect(open.content.get());
  open_.push_back(std::move(open));
}

// The innermost.
MarkedForms::Open MarkedForms::close() {
  Open open = std::move(open_.back());
  open_.pop_back();
  // A canvas that has been closed meanwhile stays so.
  if (open.canvas->content() == open.content.get()) open.canvas->redirect(open.outer);
  return open;
}

bool MarkedForms::end() {
  if (open_.empty()) return false;
  open_.back().content->finish();
  const Open open = close();
  forms_.insert_or_assign(open.name,
                          Form{open.box, open.content->text(), open.content->resources().text(), 0});
  return true;
}

bool MarkedForms::show(std::string_view name) {
  const auto found = forms_.find(name);
  if (found == forms_.end()) return false;
  Form& form = found->second;
  ContentWriter* const content = graphics_.content();
  if (form.object == 0) {
    if (content == nullptr || form.content.empty()) return true;
    DictionaryText text;
    text.name("Type", "XObject").name("Subtype", "Form").box("BBox", form.box);
    text.entry("Resources", form.resources);
    form.object =
        graphics_.document().file().addSharedStream(text.entries(), form.content, StreamData::kDeflate);
    form.content.clear();
  }
  const GraphicsState& state = graphics_.state();
  if (content != nullptr) {
    content->draw(form.object, state.ctm, transformed(form.box, state.ctm), state.clip, state.rare);
  }
  return true;
}

void MarkedForms::abandon() {
  while (!open_.empty()) close();
}

}  // namespace quillpress::level3
