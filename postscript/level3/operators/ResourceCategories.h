#pragma once

#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// What every category of ours does its work with.
struct CategoryProcedures {
  Object define;
  Object find;
  Object undefine;
  Object status;
  Object forAll;
};

// Defines the categories that the language has from the start, and their built-in instances.
void addResourceCategories(Interpreter& interpreter, const CategoryProcedures& procedures);

}  // namespace quillpress::level3
