#pragma once

#include <quillpress/converter.h>

#include <string>

// The functions of the delivered library, as a caller of it gets them.
struct Library {
  decltype(&PSOpen) open;
  decltype(&PSConvertToPdf) convertToPdf;
  decltype(&PSGetPdfObjects) getPdfObjects;
  decltype(&PSGetErrorStr) getErrorStr;
  decltype(&PSClose) close;
};

// The library, with the capture of its messages running. Ends the program when it cannot be loaded.
const Library& library();

// Everything that the library has sent to the debugger output since the last call.
std::string takeMessages();
