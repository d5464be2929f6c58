#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "postscript/level3/graphics/Graphics.h"

namespace quillpress::level3 {

// Forms that a job draws between two pdfmarks (BP and EP) and shows by a third (SP). They are not on the page
// where they are drawn, and in the file only when they are shown.
class MarkedForms {
 public:
  explicit MarkedForms(Graphics& graphics) : graphics_(graphics) {}

  // What is painted from here on goes into the form; `box` is its extent in user space. Throws limitcheck for
  // forms within forms without end.
  void begin(std::string_view name, const Box& box);
  // False when no form has been begun.
  bool end();
  // Draws a form in the present user space; false when there is none of this name.
  bool show(std::string_view name);
  // Ends those that a job leaves open, without keeping them.
  void abandon();

 private:
  struct Open {
    std::string name;
    Box box;
    std::unique_ptr<ContentWriter> content;
    // What has been painted on when it began, and where that went: a grestore does not end a form.
    std::shared_ptr<Canvas> canvas;
    ContentWriter* outer = nullptr;
  };
  struct Form {
    Box box;
    std::string content;
    std::string resources;
    ObjectNumber object = 0;
  };

  Open close();

  Graphics& graphics_;
  std::vector<Open> open_;
  std::map<std::string, Form, std::less<>> forms_;
};

}  // namespace quillpress::level3
