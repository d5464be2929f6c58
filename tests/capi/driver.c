/* The print driver side as a stranger calls it: plain C11, both public headers, linked with the library. Here
 * are the calls of careless and unlucky callers, which need no printer. Error boxes have no display to show
 * up on, and return at once. */
#include <quillpress/converter.h>
#include <quillpress/driver.h>
#include <stdio.h>
#include <string.h>
#include <wchar.h>

static int failures = 0;

#define EXPECT(condition) \
  ((condition) ? (void)0 : (void)(++failures, printf("%s:%d: %s\n", __FILE__, __LINE__, #condition)))

/* Never a job: none; an odd address; one past all memory; the largest number. */
static const unsigned long kNoJobs[] = {0, 1, 0x80000000UL, 0xFFFFFFFFUL};

static void jobNeedsAPrinter(void) {
  wchar_t unknown[] = L"A printer that nobody has installed";
  wchar_t document[] = L"Letter";
  EXPECT(DocStart(NULL) == 0);
  EXPECT(DocStart(unknown) == 0);
  EXPECT(DocStart2K(NULL, 0, NULL, NULL) == 0);
  EXPECT(DocStart2K(NULL, 0, NULL, unknown) == 0);
  EXPECT(DocStart2K((void *)(size_t)0x7FFFFFFF, 3, unknown, document) == 0);
}

/* A port that no printer prints to is no printer. */
static void jobNeedsAPrinterOnItsPort(void) {
  wchar_t port[] = L"\\\\nobody\\nothing";
  wchar_t portWithCommas[] = L",,nobody,nothing";
  EXPECT(DocStart(port) == 0);
  EXPECT(DocStart(portWithCommas) == 0);
}

static void longNamesAreSurvived(void) {
  static wchar_t name[70000];
  wmemset(name, L'x', sizeof name / sizeof *name - 1);
  EXPECT(DocStart(name) == 0);
  name[0] = name[1] = L'\\';
  EXPECT(DocStart(name) == 0);
  EXPECT(DocStart2K(NULL, 0, name, name) == 0);
}

static void invalidJobTakesNothing(void) {
  for (size_t i = 0; i < sizeof kNoJobs / sizeof *kNoJobs; ++i) {
    EXPECT(DocWrite(kNoJobs[i], "%!", 2) == 0);
    EXPECT(DocWrite(kNoJobs[i], NULL, 0) == 0);
    EXPECT(DocWrite(kNoJobs[i], NULL, 0xFFFFFFFFUL) == 0);
    EXPECT(DocEnd(kNoJobs[i]) == 0);
    EXPECT(DocEnd(kNoJobs[i]) == 0);
  }
}

static void invalidJobGivesTheDefaultNumber(void) {
  for (size_t i = 0; i < sizeof kNoJobs / sizeof *kNoJobs; ++i) {
    EXPECT(getIntVal(kNoJobs[i], L"resIndex", 42) == 42);
    EXPECT(getIntVal(kNoJobs[i], NULL, -7) == -7);
  }
}

static void invalidJobLeavesBuffersAlone(void) {
  wchar_t wide[] = L"as it was";
  char narrow[] = "as it was";
  for (size_t i = 0; i < sizeof kNoJobs / sizeof *kNoJobs; ++i) {
    EXPECT(getStringVal(kNoJobs[i], L"LastDir", wide, 10, L"default") == 0);
    EXPECT(getStringVal(kNoJobs[i], L"pdfaXML", wide, 10, NULL) == 0);
    EXPECT(getStringVal(kNoJobs[i], NULL, NULL, 0, NULL) == 0);
    EXPECT(getStringMultibyte(kNoJobs[i], "pdfaXML", narrow, 10) == 0);
    EXPECT(getStringMultibyte(kNoJobs[i], "LastDir", narrow, 10) == 0);
    EXPECT(getStringMultibyte(kNoJobs[i], NULL, NULL, 0) == 0);
  }
  EXPECT(wcscmp(wide, L"as it was") == 0);
  EXPECT(strcmp(narrow, "as it was") == 0);
}

static unsigned objectsAfter(void *converter, const char *chunk) {
  unsigned count = 0;
  int length = -1;
  EXPECT(PSConvertToPdf(converter, chunk, &length) != NULL);
  EXPECT(PSGetPdfObjects(converter, &count) != NULL);
  return count;
}

/* The two sides share the list of PDF objects: a job begins with an empty one, even a job that fails. */
static void jobForgetsTheConvertersObjects(void) {
  static const char kPattern[] =
      "/p 9 dict def p /XStep 2 put p /YStep 3 put p /BBox [0 0 2 3] put p /PaintProc {pop stroke} put "
      "p [1 0 0 1 0 0] makepattern setpattern ";
  static const float kIdentity[6] = {1, 0, 0, 1, 0, 0};
  void *converter = PSOpen(kIdentity);
  EXPECT(objectsAfter(converter, kPattern) == 1);
  EXPECT(objectsAfter(converter, "gsave ") == 1);
  EXPECT(DocStart2K(NULL, 0, NULL, NULL) == 0);
  EXPECT(objectsAfter(converter, "grestore ") == 0);
  EXPECT(objectsAfter(converter, kPattern) == 1);
  PSClose(converter);
}

int main(void) {
  jobNeedsAPrinter();
  jobNeedsAPrinterOnItsPort();
  longNamesAreSurvived();
  invalidJobTakesNothing();
  invalidJobGivesTheDefaultNumber();
  invalidJobLeavesBuffersAlone();
  jobForgetsTheConvertersObjects();
  if (failures > 0) printf("%d failures\n", failures);
  return failures > 0 ? 1 : 0;
}
