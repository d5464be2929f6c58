/* The converter as a stranger calls it: plain C11, nothing but the public header. Natively the program is
 * linked with the library; on Windows it loads the DLL by name, as hosts do. */
#include <quillpress/converter.h>
#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#ifdef _WIN32
#include <windows.h>

static void *(QUILLPRESS_CALL *open_)(const float *);
static const char *(QUILLPRESS_CALL *convert_)(void *, const char *, int *);
static int(QUILLPRESS_CALL *startPage_)(void *, const float *);
static PdfObject **(QUILLPRESS_CALL *getObjects_)(void *, unsigned *);
static const char *(QUILLPRESS_CALL *getError_)(void *);
static void(QUILLPRESS_CALL *close_)(void *);

#define PSOpen open_
#define PSConvertToPdf convert_
#define PSStartPage startPage_
#define PSGetPdfObjects getObjects_
#define PSGetErrorStr getError_
#define PSClose close_

static void find(HMODULE module, const char *name, void *function) {
  const FARPROC address = GetProcAddress(module, name);
  if (address == NULL) {
    printf("quillpress.dll does not export %s\n", name);
    exit(1);
  }
  memcpy(function, &address, sizeof address);
}

static void loadLibrary(void) {
  const HMODULE module = LoadLibraryA("quillpress.dll");
  if (module == NULL) {
    printf("quillpress.dll cannot be loaded, error %lu\n", GetLastError());
    exit(1);
  }
  find(module, "PSOpen", &open_);
  find(module, "PSConvertToPdf", &convert_);
  find(module, "PSStartPage", &startPage_);
  find(module, "PSGetPdfObjects", &getObjects_);
  find(module, "PSGetErrorStr", &getError_);
  find(module, "PSClose", &close_);
}
#else
static void loadLibrary(void) {}
#endif

static const float kIdentity[6] = {1, 0, 0, 1, 0, 0};
static const float kDoubled[6] = {2, 0, 0, 2, 0, 0};

static int failures = 0;

#define EXPECT(condition) \
  ((condition) ? (void)0 : (void)(++failures, printf("%s:%d: %s\n", __FILE__, __LINE__, #condition)))

#define EXPECT_TEXT(actual, expected) expectText(__LINE__, actual, expected)

static void expectText(int line, const char *actual, const char *expected) {
  if (actual != NULL && strcmp(actual, expected) == 0) return;
  ++failures;
  printf("%s:%d: \"%s\" instead of \"%s\"\n", __FILE__, line, actual == NULL ? "(NULL)" : actual, expected);
}

/* The content of a zero-terminated chunk; NULL when it fails. */
static const char *convert(void *handle, const char *chunk) {
  int length = -1;
  return PSConvertToPdf(handle, chunk, &length);
}

static unsigned objectCount(void *handle) {
  unsigned count = 0;
  EXPECT(PSGetPdfObjects(handle, &count) != NULL);
  return count;
}

/* Fields in their order, each at the next place that its alignment allows. */
#define EXPECT_NEXT(field, previous, previousSize)                                       \
  EXPECT(offsetof(PdfObject, field) >= offsetof(PdfObject, previous) + (previousSize) && \
         offsetof(PdfObject, field) < offsetof(PdfObject, previous) + (previousSize) + sizeof(void *))

static void recordHasItsFieldsInOrder(void) {
  EXPECT(offsetof(PdfObject, dictionary) == 0);
  EXPECT_NEXT(reserved, dictionary, sizeof(char *));
  EXPECT_NEXT(compress, reserved, 2 * sizeof(uint32_t));
  EXPECT_NEXT(data, compress, sizeof(int32_t));
  EXPECT_NEXT(dataLength, data, sizeof(char *));
  EXPECT_NEXT(name, dataLength, sizeof(uint32_t));
  EXPECT_NEXT(kind, name, sizeof(char *));
  EXPECT_NEXT(patternDictionary, kind, sizeof(int32_t));
  EXPECT_NEXT(reservedPointer, patternDictionary, sizeof(void *));
  EXPECT_NEXT(content, reservedPointer, sizeof(void *));
  if (sizeof(void *) == 4) {
    EXPECT(offsetof(PdfObject, compress) == 12);
    EXPECT(offsetof(PdfObject, data) == 16);
    EXPECT(offsetof(PdfObject, dataLength) == 20);
    EXPECT(offsetof(PdfObject, name) == 24);
    EXPECT(offsetof(PdfObject, kind) == 28);
    EXPECT(offsetof(PdfObject, content) == 40);
  }
  EXPECT(PDF_OBJECT_PATTERN == 1);
  EXPECT(PDF_OBJECT_IMAGE == 3);
}

static void emptyListHasAnArray(void) {
  void *handle = PSOpen(kIdentity);
  unsigned count = 7;
  EXPECT(PSGetPdfObjects(handle, &count) != NULL);
  EXPECT(count == 0);
  PSClose(handle);
}

static void lengthsGoBothWays(void) {
  void *handle = PSOpen(kIdentity);
  int length = -1;
  EXPECT_TEXT(PSConvertToPdf(handle, "gsave grestore ", &length), "q Q ");
  EXPECT(length == 4);
  length = -12345;
  EXPECT_TEXT(PSConvertToPdf(handle, "gsave ", &length), "q ");
  EXPECT(length == 2);
  length = 6;
  EXPECT_TEXT(PSConvertToPdf(handle, "gsave grestore ", &length), "q ");
  EXPECT(length == 2);
  length = 0;
  EXPECT_TEXT(PSConvertToPdf(handle, "gsave ", &length), "");
  EXPECT(length == 0);
  length = -1;
  EXPECT_TEXT(PSConvertToPdf(handle, "", &length), "");
  EXPECT(length == 0);
  PSClose(handle);
}

static void contentMayHoldZeroBytes(void) {
  static const char kChunk[] = "1 1 8 [1 0 0 1 0 0] (\\000) image ";
  static const char kContent[] = "q BI\n/W 1 /H 1 /BPC 8 /CS /G \nID\n\0\nEI\nQ\n";
  void *handle = PSOpen(kIdentity);
  int length = -1;
  const char *content = PSConvertToPdf(handle, kChunk, &length);
  EXPECT(content != NULL && length == (int)sizeof kContent - 1 &&
         memcmp(content, kContent, sizeof kContent) == 0);
  PSClose(handle);
}

static void failuresLeaveTheLengthAlone(void) {
  void *handle = PSOpen(kIdentity);
  int length = -1;
  EXPECT(PSConvertToPdf(handle, "5 concat ", &length) == NULL);
  EXPECT(length == -1);
  length = 9;
  EXPECT(PSConvertToPdf(handle, "5 concat ", &length) == NULL);
  EXPECT(length == 9);
  PSClose(handle);
}

static void errorsAreTold(void) {
  static const char kPrefix[] = "Exception:[TransformOperators.cpp:";
  void *handle = PSOpen(kIdentity);
  EXPECT_TEXT(PSGetErrorStr(handle), "");
  EXPECT(convert(handle, "gsave ") != NULL);
  EXPECT_TEXT(PSGetErrorStr(handle), "");
  EXPECT(convert(handle, "5 concat ") == NULL);
  EXPECT(strncmp(PSGetErrorStr(handle), kPrefix, sizeof kPrefix - 1) == 0);
  EXPECT(strstr(PSGetErrorStr(handle), "] Illegal param to concat operator\n") != NULL);
  EXPECT(convert(handle, "5 setmatrix ") == NULL);
  EXPECT(strstr(PSGetErrorStr(handle), "] Matrix param expected for setmatrix operator\n") != NULL);
  EXPECT(strstr(PSGetErrorStr(handle), "concat") == NULL);
  EXPECT_TEXT(convert(handle, "gsave "), "q ");
  EXPECT(strstr(PSGetErrorStr(handle), "setmatrix") != NULL);
  PSClose(handle);
}

/* A text lasts until the next call on its handle; calls on other handles do not hurt it. */
static void textsBelongToTheirConverter(void) {
  void *first = PSOpen(kIdentity);
  void *second = PSOpen(kIdentity);
  const char *content = convert(first, "gsave ");
  EXPECT_TEXT(convert(second, "1 setgray "), "1 G 1 g ");
  EXPECT(convert(second, "5 concat ") == NULL);
  EXPECT_TEXT(content, "q ");
  EXPECT_TEXT(PSGetErrorStr(first), "");
  PSClose(second);
  EXPECT_TEXT(content, "q ");
  EXPECT_TEXT(convert(first, "grestore "), "Q ");
  PSClose(first);
}

static void convertersAreIndependent(void) {
  void *first = PSOpen(kIdentity);
  void *second = PSOpen(kDoubled);
  EXPECT_TEXT(convert(first, "/width 1 def 0.2"), "");
  EXPECT_TEXT(convert(second, "/width 2 def {gsave "), "");
  EXPECT_TEXT(convert(first, "5 setgray width setlinewidth "), "0.25 G 0.25 g 1 w ");
  EXPECT_TEXT(convert(second, "grestore} exec width setlinewidth "), "q Q 2 w ");
  PSClose(first);
  PSClose(second);
}

static void pagesKeepTheJob(void) {
  static const char kShowMatrix[] = "matrix currentmatrix aload pop pop pop pop pop pop setlinewidth ";
  void *handle = PSOpen(kDoubled);
  EXPECT_TEXT(convert(handle, kShowMatrix), "2 w ");
  EXPECT_TEXT(
      convert(handle, "gsave 9 9 scale /draw {currentlinewidth setgray} def 3 setlinewidth 5 6 moveto "),
      "q 9 0 0 9 0 0 cm\n3 w ");
  (void)PSStartPage(handle, kIdentity);
  EXPECT_TEXT(convert(handle, kShowMatrix), "1 w ");
  (void)PSStartPage(handle, kIdentity);
  EXPECT_TEXT(convert(handle, "draw 1 1 lineto "), "0 G 0 g 1 1 l\n");
  PSClose(handle);
}

static void aPageMayBeginInTheMiddleOfAToken(void) {
  void *handle = PSOpen(kIdentity);
  EXPECT_TEXT(convert(handle, "0.2"), "");
  (void)PSStartPage(handle, kIdentity);
  EXPECT_TEXT(convert(handle, "5 setgray "), "0.25 G 0.25 g ");
  PSClose(handle);
}

/* A program whose image has 4001 bytes, the last being `last`. */
static const char *imageJob(char last) {
  static char job[5000];
  const size_t start = (size_t)sprintf(job, "1 1 8 [1 0 0 1 0 0] (");
  memset(job + start, 'x', 4000);
  sprintf(job + start + 4000, "%c) image ", last);
  return job;
}

static const char kPatternJob[] =
    "/p 9 dict def p /XStep 2 put p /YStep 3 put p /BBox [0 0 2 3] put p /PaintProc {pop stroke} put "
    "p [1 0 0 1 0 0] makepattern setpattern ";

static void objectsAreNamedInOneSequence(void) {
  void *handle = PSOpen(kIdentity);
  unsigned count = 0;
  PdfObject **objects = NULL;
  EXPECT(objectCount(handle) == 0);
  EXPECT_TEXT(convert(handle, imageJob('a')), "/PSI1 Do\n");
  EXPECT_TEXT(convert(handle, kPatternJob), "/Pattern cs\n/PA2 scn\n");
  EXPECT_TEXT(convert(handle, imageJob('b')), "/PSI3 Do\n");
  EXPECT_TEXT(convert(handle, imageJob('a')), "/PSI1 Do\n");
  objects = PSGetPdfObjects(handle, &count);
  EXPECT(objects != NULL && count == 3);
  if (objects == NULL || count != 3) return;
  EXPECT_TEXT(objects[0]->name, "/PSI1");
  EXPECT_TEXT(objects[1]->name, "/PA2");
  EXPECT_TEXT(objects[2]->name, "/PSI3");
  EXPECT(objects[0]->kind == PDF_OBJECT_IMAGE);
  EXPECT(objects[1]->kind == PDF_OBJECT_PATTERN);
  EXPECT_TEXT(objects[0]->dictionary,
              "/Type /XObject /Subtype /Image /BitsPerComponent 8 /Width 1 /Height 1 "
              "/ColorSpace /DeviceGray ");
  EXPECT_TEXT(objects[1]->dictionary,
              "/Type /Pattern\n/Matrix [1 0 0 1 0 0 ]\n/XStep 2\n/YStep 3\n/BBox [0 0 2 3 ]\n"
              "/Resources <<>> ");
  EXPECT(objects[0]->dataLength == 4001 && objects[0]->data[4000] == 'a');
  EXPECT(objects[2]->dataLength == 4001 && objects[2]->data[4000] == 'b');
  EXPECT(objects[0]->compress == 1);
  EXPECT_TEXT(objects[1]->data, "q 2 0 0 3 0 0 cm\nS Q\n");
  EXPECT(objects[1]->dataLength == strlen(objects[1]->data));
  EXPECT(objects[0]->reserved[0] == 0 && objects[0]->reserved[1] == 0);
  EXPECT(objects[0]->patternDictionary == NULL && objects[1]->patternDictionary != NULL);
  EXPECT(objects[0]->reservedPointer == NULL && objects[1]->reservedPointer == NULL);
  EXPECT_TEXT(objects[0]->content, "");
  EXPECT_TEXT(objects[1]->content, "");
  PSClose(handle);
}

/* The next call replaces the array; the records stay, whoever made them. */
static void recordsOutliveArrayAndConverter(void) {
  void *handle = PSOpen(kIdentity);
  unsigned count = 0;
  PdfObject *first = PSGetPdfObjects(handle, &count)[0];
  EXPECT(count == 3);
  EXPECT_TEXT(convert(handle, imageJob('c')), "/PSI4 Do\n");
  EXPECT(PSGetPdfObjects(handle, &count)[0] == first);
  EXPECT(count == 4);
  PSClose(handle);
  EXPECT_TEXT(first->name, "/PSI1");
  EXPECT(first->data[4000] == 'a');
}

/* What a long-lived host does between jobs. */
static void theListIsEmptiedWhenAskedWithoutHandleAndNumber(void) {
  void *handle = PSOpen(kIdentity);
  unsigned count = 7;
  PdfObject **none = PSGetPdfObjects(NULL, &count);
  EXPECT(none != NULL && none[0] == NULL && count == 0);
  EXPECT(objectCount(handle) == 4);
  none = PSGetPdfObjects(NULL, NULL);
  EXPECT(none != NULL && none[0] == NULL);
  EXPECT(objectCount(handle) == 0);
  EXPECT_TEXT(convert(handle, imageJob('a')), "/PSI1 Do\n");
  EXPECT_TEXT(convert(handle, kPatternJob), "/Pattern cs\n/PA2 scn\n");
  EXPECT(objectCount(handle) == 2);
  PSClose(handle);
  /* The pattern holds a dictionary of a converter that is no more. */
  (void)PSGetPdfObjects(NULL, NULL);
  handle = PSOpen(kIdentity);
  EXPECT(objectCount(handle) == 0);
  PSClose(handle);
}

/* It may also come while a pattern is being made; the pattern then belongs to no list. */
static void theListMayBeEmptiedInTheMiddleOfAPattern(void) {
  void *handle = PSOpen(kIdentity);
  EXPECT(convert(handle,
                 "/p 9 dict def p /XStep 2 put p /YStep 3 put p /BBox [0 0 2 3] put p /PaintProc "
                 "{pop currentfile 3 string readstring pop pop stroke} put p [1 0 0 1 0 0] makepattern a") !=
         NULL);
  (void)PSGetPdfObjects(NULL, NULL);
  EXPECT(convert(handle, "bc setpattern 3 setlinewidth ") != NULL);
  EXPECT(objectCount(handle) == 0);
  PSClose(handle);
}

static void convertersMayBeClosedAtAnyMoment(void) {
  static const char *const kMoments[] = {
      "",
      "gsave 12",
      "(a string",
      "<0123",
      "<~87cUR",
      "% a comment",
      "{1 2 {3 4",
      "/na",
      "(escape\\",
      "[1 2 3",
      "1 2 3 gsave gsave save",
      "currentfile 10 string readstring abc",
      "currentfile 10 string readhexstring 0",
      "currentfile 10 string readline abc",
      "2 2 8 [1 0 0 1 0 0] {currentfile 4 string readstring pop} image ab",
      "5 {currentfile 1 string readstring pop pop} repeat a",
      ("/p 9 dict def p /XStep 2 put p /YStep 3 put p /BBox [0 0 2 3] put p /PaintProc {currentfile 9 string "
       "readstring} put p [1 0 0 1 0 0] makepattern "),
  };
  static const char *const kFailures[] = {
      "5 concat ",
      "3 {1 2 5 concat} repeat ",
      "2 2 8 [1 0 0 1 0 0] (abc) image ",
      "/p 9 dict def p /XStep 2 put p /YStep 3 put p [1 0 0 1 0 0] makepattern ",
      "(bad escape \\x) ",
  };
  for (size_t i = 0; i < sizeof kMoments / sizeof *kMoments; ++i) {
    void *handle = PSOpen(kIdentity);
    EXPECT(convert(handle, kMoments[i]) != NULL);
    PSClose(handle);
  }
  for (size_t i = 0; i < sizeof kFailures / sizeof *kFailures; ++i) {
    void *handle = PSOpen(kIdentity);
    EXPECT(convert(handle, kFailures[i]) == NULL);
    PSClose(handle);
  }
}

static void nullIsNoConverter(void) {
  PSClose(NULL);
}

int main(void) {
  loadLibrary();
  recordHasItsFieldsInOrder();
  emptyListHasAnArray();
  lengthsGoBothWays();
  contentMayHoldZeroBytes();
  failuresLeaveTheLengthAlone();
  errorsAreTold();
  textsBelongToTheirConverter();
  convertersAreIndependent();
  pagesKeepTheJob();
  aPageMayBeginInTheMiddleOfAToken();
  objectsAreNamedInOneSequence();
  recordsOutliveArrayAndConverter();
  theListIsEmptiedWhenAskedWithoutHandleAndNumber();
  theListMayBeEmptiedInTheMiddleOfAPattern();
  convertersMayBeClosedAtAnyMoment();
  nullIsNoConverter();
  if (failures > 0) printf("%d failures\n", failures);
  return failures > 0 ? 1 : 0;
}
