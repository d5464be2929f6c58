#pragma once

#include <ostream>
#include <span>
#include <string_view>

// A small program for a family of operators. All run without an error, and each uses everything that its
// family makes: every allocation in it is going to fail once.
struct Program {
  std::string_view name;
  std::string_view text;
};

// What a test calls its parameter.
inline void PrintTo(const Program& program, std::ostream* out) {
  *out << program.text;
}

std::span<const Program> programs();

// A program that touches every part of a converter and depends on nothing that ran before it.
std::string_view nextJob();
