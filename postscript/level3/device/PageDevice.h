#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "postscript/level3/device/MarkedForms.h"
#include "postscript/level3/device/PageOrientation.h"
#include "postscript/level3/graphics/Graphics.h"
#include "postscript/level3/interpreter/Interpreter.h"
#include "postscript/level3/pdf/PdfDocument.h"

namespace quillpress::level3 {

// The page device: its parameters, the page that is being painted, and the pages as they are shown.
class PageDevice final : public Interpreter::Extension {
 public:
  static constexpr Interpreter::Slot kSlot = Interpreter::Slot::kDevice;

  // The resolution that a job sees. Ten pixels a point keep what programs round to pixels fine.
  static constexpr double kResolution = 720;

  PageDevice(Interpreter& interpreter, Graphics& graphics, PdfDocument& document);

  // Makes the device current with these parameters, before the job begins.
  void start(double width, double height);

  // Shows only this box of each page, in default user space, whatever the page size. What the job has painted
  // on the present page stays; the clip is that of the box from the next page on.
  void cropTo(const Box& box) { crop_ = box; }
  // Starts the present page anew for the box. To be called before the job begins.
  void startCropped(const Box& box);
  // Keeps the last page back until finish(), so that it can still be cropped.
  void holdLastPage() { holdsLastPage_ = true; }

  // Turns pages so that viewers show them the way they are read.
  void turnPages(bool isWanted) { turnsPages_ = isWanted; }
  // Which way that is, by the comments of the job.
  PageOrientation& orientation() { return orientation_; }

  // Called when a page has been shown, with their number so far.
  void onPage(std::function<void(std::size_t)> callback) { onPage_ = std::move(callback); }

  void setPageDevice(const Object& request);
  Object currentPageDevice();
  void showPage();
  void copyPage();
  void erasePage();
  void installNullDevice();

  // Writes what is still held back; `showsRest` shows a page that something was painted on.
  void finish(bool showsRest);

  std::size_t pagesShown() const { return pagesShown_; }
  ContentWriter& content() { return content_; }

  // ---- For pdfmark: what goes with the page that is being painted.
  void addAnnotation(ObjectNumber annotation) { annotations_.push_back(annotation); }
  void setPageEntry(std::string_view key, std::string_view value, bool isForAllPages);
  void setCropBox(const Box& box, bool isForAllPages);
  MarkedForms& forms() { return forms_; }

  void trace(Tracer& tracer) const override { tracer.visit(initialParameters_); }

 private:
  struct PageEntry {
    std::string key;
    std::string value;
  };

  Object makeParameters(double width, double height);
  void install(const Object& parameters, bool runsProcedures);
  Box pageBox() const;
  double resolution(const Object& parameters) const;
  bool callEndPage(int reason);
  void callBeginPage();
  Object parameter(std::string_view key) const;
  void emitPage();
  [[nodiscard]] int turnOfPage(const Box& page) const;
  void beginPage();
  ContentWriter::Settings contentSettings() const;

  Interpreter& interpreter_;
  Graphics& graphics_;
  PdfDocument& document_;
  std::vector<ObjectNumber> contents_;
  ContentWriter content_;
  std::shared_ptr<Canvas> canvas_;
  Object initialParameters_;
  std::vector<ObjectNumber> annotations_;
  std::vector<PageEntry> pageEntries_;
  std::vector<PageEntry> allPagesEntries_;
  std::optional<Box> pageCropBox_;
  std::optional<Box> allPagesCropBox_;
  std::optional<Box> crop_;
  std::optional<PageParts> heldPage_;
  std::function<void(std::size_t)> onPage_;
  PageOrientation orientation_;
  MarkedForms forms_;
  std::size_t pagesShown_ = 0;
  bool holdsLastPage_ = false;
  bool turnsPages_ = false;
};

inline PageDevice& pageDeviceOf(Interpreter& interpreter) {
  return interpreter.extension<PageDevice>();
}

}  // namespace quillpress::level3
