#pragma once

#include <string>

namespace quillpress::harness {

// Prints two pages as a program does, through the printer's driver into a file: lines, shapes and brushes on
// the first, a bitmap on the second. Units are 1/300 inch from the top left corner.
void printDrawing(const std::wstring& printerName, const std::wstring& documentName,
                  const std::wstring& file);

// The same with words: these on the first page, in letters of half an inch, and the others on the second, in
// bold ones.
void printWords(const std::wstring& printerName, const std::wstring& documentName, const std::wstring& file,
                const std::wstring& words, const std::wstring& others);

}  // namespace quillpress::harness
