/* The document's C functions, called as a stranger would. */
#include <quillpress/document.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static int failures = 0;

static void expect(int holds, const char *what) {
  if (holds) return;
  ++failures;
  fprintf(stderr, "not so: %s\n", what);
}

struct Buffer {
  char bytes[65536];
  size_t size;
};

static int keep(void *context, const void *data, size_t size) {
  struct Buffer *buffer = context;
  if (buffer->size + size >= sizeof buffer->bytes) return 1;
  memcpy(buffer->bytes + buffer->size, data, size);
  buffer->size += size;
  buffer->bytes[buffer->size] = '\0';
  return 0;
}

static int refuse(void *context, const void *data, size_t size) {
  (void)context;
  (void)data;
  (void)size;
  return 1;
}

struct Text {
  const char *rest;
};

/* A few bytes at a time. */
static int64_t readText(void *context, void *buffer, size_t size) {
  struct Text *text = context;
  size_t count = strlen(text->rest);
  if (count > 7) count = 7;
  if (count > size) count = size;
  memcpy(buffer, text->rest, count);
  text->rest += count;
  return (int64_t)count;
}

static int64_t failToRead(void *context, void *buffer, size_t size) {
  (void)context;
  (void)buffer;
  (void)size;
  return -1;
}

static int stopAtSecondPage(void *context, uint64_t pages) {
  *(uint64_t *)context = pages;
  return pages == 2;
}

static int convertText(QuillpressDocument *document, const char *job, struct Buffer *pdf) {
  pdf->size = 0;
  pdf->bytes[0] = '\0';
  return QuillpressDocumentConvertMemory(document, job, strlen(job), keep, pdf);
}

static void testConversion(QuillpressDocument *document, struct Buffer *pdf) {
  struct Text text;
  size_t first;
  expect(convertText(document, "0 0 9 9 rectfill showpage", pdf) == QUILLPRESS_DOCUMENT_DONE,
         "a job is converted");
  expect(strncmp(pdf->bytes, "%PDF-1.", 7) == 0, "the result is a PDF file");
  expect(QuillpressDocumentPageCount(document) == 1, "it has one page");
  expect(QuillpressDocumentError(document)[0] == '\0', "there is no error");
  expect(QuillpressDocumentWarning(document, 0) == NULL, "there is no warning");
  expect(QuillpressDocumentErrorName(document)[0] == '\0', "an error that is none has no name");
  expect(QuillpressDocumentErrorPage(document) == 0, "no page");
  expect(QuillpressDocumentErrorByte(document) == -1, "and no place");
  expect(QuillpressDocumentSubstitutedFont(document, 0) == NULL, "no font stands in for another");
  first = pdf->size;
  text.rest = "0 0 9 9 rectfill showpage";
  pdf->size = 0;
  expect(QuillpressDocumentConvert(document, readText, &text, keep, pdf) == QUILLPRESS_DOCUMENT_DONE,
         "a job can come from a callback");
  expect(pdf->size == first, "and makes the same file");
}

static void testErrors(QuillpressDocument *document, struct Buffer *pdf) {
  expect(convertText(document, "showpage 1 0 div", pdf) == QUILLPRESS_DOCUMENT_FAILED,
         "an error is reported");
  expect(strcmp(QuillpressDocumentError(document), "undefinedresult: div, page 2, byte 16") == 0,
         "with name, command, page and place");
  expect(strcmp(QuillpressDocumentErrorName(document), "undefinedresult") == 0, "the name can be asked for");
  expect(QuillpressDocumentErrorPage(document) == 2, "and the page");
  expect(QuillpressDocumentErrorByte(document) == 16, "and the place");
  expect(QuillpressDocumentPageCount(document) == 1, "the page before it is there");
  expect(pdf->size > 0, "in a file");
  expect(convertText(document, "nonsense showpage", pdf) == QUILLPRESS_DOCUMENT_NO_PAGES, "no page, no file");
  expect(pdf->size == 0 || strstr(pdf->bytes, "%%EOF") == NULL, "nothing whole was written");
  expect(QuillpressDocumentConvert(document, failToRead, NULL, keep, pdf) == QUILLPRESS_DOCUMENT_INPUT,
         "a job that cannot be read says so");
  expect(QuillpressDocumentConvertMemory(document, "showpage", 8, refuse, NULL) == QUILLPRESS_DOCUMENT_OUTPUT,
         "a file that cannot be written says so");
  expect(
      QuillpressDocumentConvertFile(document, "/no/such/job", "/tmp/none.pdf") == QUILLPRESS_DOCUMENT_INPUT,
      "a job that is not there says so");
}

static const char kLandscape[] =
    "%!PS-Adobe-3.0\n%%Orientation: Landscape\n%%EndComments\n0 0 9 9 rectfill showpage";

static void testOptions(QuillpressDocument *document, struct Buffer *pdf) {
  struct Buffer *messages = calloc(1, sizeof *messages);
  uint64_t pages = 0;
  size_t turned;
  QuillpressDocumentSetMessages(document, keep, messages);
  convertText(document, "(hello) print showpage", pdf);
  expect(messages != NULL && strcmp(messages->bytes, "hello") == 0, "what the job prints can be read");
  QuillpressDocumentSetMessages(document, NULL, NULL);

  QuillpressDocumentSetProgress(document, stopAtSecondPage, &pages);
  expect(convertText(document, "{showpage} loop", pdf) == QUILLPRESS_DOCUMENT_FAILED,
         "progress can end a job");
  expect(pages == 2 && QuillpressDocumentPageCount(document) == 2, "after the page that it has seen");
  QuillpressDocumentSetProgress(document, NULL, NULL);

  convertText(document, kLandscape, pdf);
  turned = pdf->size;
  QuillpressDocumentSetPageTurning(document, 0);
  convertText(document, kLandscape, pdf);
  expect(pdf->size < turned, "landscape pages are turned, or left as they are");
  QuillpressDocumentSetPageTurning(document, 1);
  convertText(document, kLandscape, pdf);
  expect(pdf->size == turned, "and turned again");

  QuillpressDocumentSetTimeout(document, 0.2);
  expect(convertText(document, "showpage {} loop", pdf) == QUILLPRESS_DOCUMENT_FAILED, "time can be up");
  QuillpressDocumentSetTimeout(document, 0);
  free(messages);
}

static const char kManyLines[] =
    "1 1 6 {0 1 700 {3 mul 1 index moveto 10 9 rlineto} for stroke pop showpage} for";
static const char kManyLinesAndAnError[] =
    "1 1 6 {0 1 700 {3 mul 1 index moveto 10 9 rlineto} for stroke dup 5 eq {nonsense} if pop showpage} for";

static void testSecondThread(QuillpressDocument *document, struct Buffer *pdf) {
  struct Buffer *first = calloc(1, sizeof *first);
  int round;
  if (first == NULL) return;
  convertText(document, kManyLinesAndAnError, first);
  QuillpressDocumentSetSecondThread(document, 1);
  for (round = 0; round < 20; ++round) {
    expect(convertText(document, kManyLinesAndAnError, pdf) == QUILLPRESS_DOCUMENT_FAILED,
           "an error ends a job with a second thread, too");
    expect(QuillpressDocumentPageCount(document) == 4, "after as many pages");
    expect(pdf->size == first->size && memcmp(pdf->bytes, first->bytes, pdf->size) == 0, "in the same file");
  }
  expect(QuillpressDocumentConvertMemory(document, kManyLines, strlen(kManyLines), refuse, NULL) ==
             QUILLPRESS_DOCUMENT_OUTPUT,
         "a file that cannot be written says so with a second thread, too");
  QuillpressDocumentSetSecondThread(document, 0);
  free(first);
}

int main(void) {
  QuillpressDocument *document = QuillpressDocumentNew();
  struct Buffer *pdf = calloc(1, sizeof *pdf);
  if (document == NULL || pdf == NULL) return 1;
  testConversion(document, pdf);
  testErrors(document, pdf);
  testOptions(document, pdf);
  testSecondThread(document, pdf);
  QuillpressDocumentFree(document);
  QuillpressDocumentFree(NULL);
  free(pdf);
  return failures == 0 ? 0 : 1;
}
