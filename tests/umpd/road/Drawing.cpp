#include "tests/umpd/road/Drawing.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <functional>
#include <vector>

namespace quillpress::harness {
namespace {

// Draws with an object of GDI for as long as this one lives.
class Selected {
 public:
  Selected(HDC page, HGDIOBJ object) : page_(page), object_(object), former_(SelectObject(page, object)) {}
  ~Selected() {
    SelectObject(page_, former_);
    DeleteObject(object_);
  }
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;

 private:
  HDC page_;
  HGDIOBJ object_;
  HGDIOBJ former_;
};

void drawShapes(HDC page) {
  MoveToEx(page, 100, 100, nullptr);
  LineTo(page, 500, 300);
  {
    const Selected red(page, CreateSolidBrush(RGB(255, 0, 0)));
    Rectangle(page, 600, 100, 900, 400);
    Ellipse(page, 600, 600, 900, 800);
  }
  {
    const Selected thick(page, CreatePen(PS_SOLID, 10, RGB(0, 0, 255)));
    const Selected empty(page, GetStockObject(NULL_BRUSH));
    const std::array<POINT, 3> triangle{{{100, 1500}, {300, 1500}, {200, 1800}}};
    Polygon(page, triangle.data(), static_cast<int>(triangle.size()));
  }
  const Selected hatched(page, CreateHatchBrush(HS_CROSS, RGB(0, 128, 0)));
  Rectangle(page, 100, 1000, 500, 1300);
}

void drawBitmap(HDC page) {
  constexpr int kSide = 16;
  std::array<unsigned char, static_cast<std::size_t>(3 * kSide * kSide)> samples{};
  for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<unsigned char>(i * 7);
  BITMAPINFO information{};
  information.bmiHeader.biSize = sizeof information.bmiHeader;
  information.bmiHeader.biWidth = kSide;
  information.bmiHeader.biHeight = kSide;
  information.bmiHeader.biPlanes = 1;
  information.bmiHeader.biBitCount = 24;
  StretchDIBits(page, 1000, 1000, 400, 400, 0, 0, kSide, kSide, samples.data(), &information, DIB_RGB_COLORS,
                SRCCOPY);
}

void drawWords(HDC page, const std::wstring& words, int weight) {
  constexpr int kHeight = 150;
  const Selected font(
      page, CreateFontW(kHeight, 0, 0, 0, weight, FALSE, FALSE, FALSE, ANSI_CHARSET, OUT_DEFAULT_PRECIS,
                        CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, FF_DONTCARE, L"Arial"));
  // Wine takes the page of a printer that it has no description of to have no height: its lower edge is 0.
  EXPECT_TRUE(TextOutW(page, 300, -2400, words.c_str(), static_cast<int>(words.size())));
}

void printPages(const std::wstring& printerName, const std::wstring& documentName, const std::wstring& file,
                const std::vector<std::function<void(HDC)>>& pages) {
  const HDC page = CreateDCW(L"WINSPOOL", printerName.c_str(), nullptr, nullptr);
  ASSERT_NE(page, nullptr) << "error " << GetLastError();
  DOCINFOW document{};
  document.cbSize = sizeof document;
  document.lpszDocName = documentName.c_str();
  document.lpszOutput = file.c_str();
  EXPECT_GT(StartDocW(page, &document), 0) << "error " << GetLastError();
  for (const auto& draw : pages) {
    EXPECT_GT(StartPage(page), 0);
    draw(page);
    EXPECT_GT(EndPage(page), 0);
  }
  EXPECT_GT(EndDoc(page), 0);
  DeleteDC(page);
}

}  // namespace

void printDrawing(const std::wstring& printerName, const std::wstring& documentName,
                  const std::wstring& file) {
  printPages(printerName, documentName, file, {drawShapes, drawBitmap});
}

void printWords(const std::wstring& printerName, const std::wstring& documentName, const std::wstring& file,
                const std::wstring& words, const std::wstring& others) {
  printPages(printerName, documentName, file,
             {[&words](HDC page) { drawWords(page, words, FW_NORMAL); },
              [&others](HDC page) { drawWords(page, others, FW_BOLD); }});
}

}  // namespace quillpress::harness
