#pragma once

#include <string>

namespace quillpress::harness {

// Prints two pages as a program does, through the printer's driver into a file: lines, shapes and brushes on
// the first, a bitmap on the second. Units are 1/300 inch from the top left corner.
void printDrawing(const std::wstring& printerName, const std::wstring& documentName,
                  const std::wstring& file);

}  // namespace quillpress::harness
