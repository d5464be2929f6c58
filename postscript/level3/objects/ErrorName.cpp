#include "postscript/level3/objects/ErrorName.h"

#include <array>

namespace quillpress::level3 {

namespace {

constexpr std::array<std::string_view, kErrorNameCount> kTexts = {"configurationerror",
                                                                  "dictfull",
                                                                  "dictstackoverflow",
                                                                  "dictstackunderflow",
                                                                  "execstackoverflow",
                                                                  "handleerror",
                                                                  "interrupt",
                                                                  "invalidaccess",
                                                                  "invalidexit",
                                                                  "invalidfileaccess",
                                                                  "invalidfont",
                                                                  "invalidrestore",
                                                                  "ioerror",
                                                                  "limitcheck",
                                                                  "nocurrentpoint",
                                                                  "rangecheck",
                                                                  "stackoverflow",
                                                                  "stackunderflow",
                                                                  "syntaxerror",
                                                                  "timeout",
                                                                  "typecheck",
                                                                  "undefined",
                                                                  "undefinedfilename",
                                                                  "undefinedresource",
                                                                  "undefinedresult",
                                                                  "unmatchedmark",
                                                                  "unregistered",
                                                                  "VMerror"};

static_assert(!kTexts.back().empty());

}  // namespace

std::string_view textOf(ErrorName name) {
  return kTexts[static_cast<std::size_t>(name)];
}

void raise(ErrorName name) {
  throw PostscriptError{name};
}

}  // namespace quillpress::level3
