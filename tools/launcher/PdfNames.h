#pragma once

#include <string>
#include <string_view>

namespace quillpress::launcher {

// Where the PDF of a finished file goes. Most printers name their files .pdf from the start: then the PDF
// takes the file's place. An ending of PostScript gives way to .pdf, and any other name gets it added.
std::wstring pdfPathOf(std::wstring_view file);

// The same name in another folder.
std::wstring inFolder(std::wstring_view folder, std::wstring_view path);

// The n-th name to try where names are taken: "a.pdf", "a (2).pdf", "a (3).pdf". REQUIRES: the path ends in
// .pdf
std::wstring numbered(std::wstring_view path, unsigned number);

// The folder of a path, with its last separator; empty for a bare name.
std::wstring_view folderOf(std::wstring_view path);

// What converts `file` into `output`, a name in the working folder.
std::wstring converterCommandLine(const std::wstring& program, const std::wstring& file,
                                  const std::wstring& output);

}  // namespace quillpress::launcher
