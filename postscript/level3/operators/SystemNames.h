#pragma once

namespace quillpress::level3 {

class Interpreter;

// Tells the scanner which names binary tokens mean by their numbers.
void setSystemNames(Interpreter& interpreter);

}  // namespace quillpress::level3
