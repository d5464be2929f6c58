/* Quillpress document: a PostScript job in, a PDF file out. The whole language, LanguageLevel 3.
 *
 *     QuillpressDocument *document = QuillpressDocumentNew();
 *     int status = QuillpressDocumentConvertFile(document, "job.ps", "job.pdf");
 *     if (status != QUILLPRESS_DOCUMENT_DONE) puts(QuillpressDocumentError(document));
 *     QuillpressDocumentFree(document);
 *
 * Conventions
 *   Handles    A handle is used by one thread at a time; QuillpressDocumentCancel alone may be called by
 *              another one. Different handles do not touch each other. A handle converts any number of
 *              jobs, one after the other.
 *   Text       Returned text ends with a zero byte, is UTF-8 where it is not the job's own, belongs to the
 *              handle, and is valid until its next conversion.
 *   Errors     No C++ exception leaves these functions. A conversion returns one of the values below;
 *              QuillpressDocumentError and QuillpressDocumentWarning say more, a line each.
 *   Pages      Pages that were complete before an error are in the PDF file, which is whole then, too.
 *   Safety     A job writes no file and runs no command, and it reads no file but those in folders that
 *              QuillpressDocumentAllowRead names.
 */
#ifndef QUILLPRESS_DOCUMENT_H
#define QUILLPRESS_DOCUMENT_H

#include <stddef.h>
#include <stdint.h>

#ifndef QUILLPRESS_DOCUMENT_API
#if defined(__GNUC__) && !defined(_WIN32)
#define QUILLPRESS_DOCUMENT_API __attribute__((visibility("default")))
#else
#define QUILLPRESS_DOCUMENT_API
#endif
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* How a conversion ended. */
enum {
  QUILLPRESS_DOCUMENT_DONE = 0,
  QUILLPRESS_DOCUMENT_NO_PAGES = 1,   /* an error or no page at all: there is no PDF file */
  QUILLPRESS_DOCUMENT_INPUT = 3,      /* the job cannot be read */
  QUILLPRESS_DOCUMENT_OUTPUT = 4,     /* the PDF cannot be written */
  QUILLPRESS_DOCUMENT_INCOMPLETE = 5, /* the job is cut off, or something was not kept: see the warnings */
  QUILLPRESS_DOCUMENT_FAILED = 6      /* an error; the pages before it are in the file */
};

/* Values for QuillpressDocumentSetCrop. */
enum {
  QUILLPRESS_CROP_ENCAPSULATED = 0, /* jobs that call themselves EPSF are cropped to their bounding box */
  QUILLPRESS_CROP_ALWAYS = 1,
  QUILLPRESS_CROP_NEVER = 2
};

typedef struct QuillpressDocument QuillpressDocument;

/* Fills the buffer with up to `size` bytes of the job; returns how many, 0 at the end, below 0 on an error.
 */
typedef int64_t (*QuillpressRead)(void *context, void *buffer, size_t size);

/* Takes bytes of the PDF file, or of what the job prints, in order; returns 0, or anything else on an error.
 */
typedef int (*QuillpressWrite)(void *context, const void *data, size_t size);

/* Called when a page is complete, with the number of pages so far; anything but 0 ends the job there. */
typedef int (*QuillpressProgress)(void *context, uint64_t pages);

/* NULL only when there is no memory. */
QUILLPRESS_DOCUMENT_API QuillpressDocument *QuillpressDocumentNew(void);
/* NULL is ignored. */
QUILLPRESS_DOCUMENT_API void QuillpressDocumentFree(QuillpressDocument *document);

/* The page, in points, of jobs that ask for none; A4 unless set. Sizes that are not above 0 are ignored. */
QUILLPRESS_DOCUMENT_API void QuillpressDocumentSetPageSize(QuillpressDocument *document, double width,
                                                           double height);
QUILLPRESS_DOCUMENT_API void QuillpressDocumentSetCrop(QuillpressDocument *document, int crop);
/* Pages are turned so that viewers show them upright, as the job's comments and its text have it; 0 leaves
 * them as the job paints them. */
QUILLPRESS_DOCUMENT_API void QuillpressDocumentSetPageTurning(QuillpressDocument *document, int isWanted);
/* Ends a job that takes longer; 0 lets it run for ever. */
QUILLPRESS_DOCUMENT_API void QuillpressDocumentSetTimeout(QuillpressDocument *document, double seconds);
/* Bytes that the values of a job may take; 0 is the default of one gibibyte. */
QUILLPRESS_DOCUMENT_API void QuillpressDocumentSetMaxMemory(QuillpressDocument *document, size_t bytes);
/* Writes images of many colours as JPEG data of this quality, from 1 to 100, where that makes them shorter;
 * any other number keeps every sample, which is the default. */
QUILLPRESS_DOCUMENT_API void QuillpressDocumentSetImageQuality(QuillpressDocument *document, int quality);
/* Averages images of many colours down that have more pixels in an inch of the page; 0, the default, keeps
 * them all. */
QUILLPRESS_DOCUMENT_API void QuillpressDocumentSetImageResolution(QuillpressDocument *document,
                                                                  double dotsPerInch);
/* Compresses finished pages and large images in a second thread while the job goes on, where the machine has
 * another processor; the PDF file is the same. Off unless set: the heap and the shared counts of a process
 * take slower ways from its second thread on. Without effect on Windows. */
QUILLPRESS_DOCUMENT_API void QuillpressDocumentSetSecondThread(QuillpressDocument *document, int isWanted);
/* Lets jobs read the files in a folder and in those below it. Can be called for several folders. */
QUILLPRESS_DOCUMENT_API void QuillpressDocumentAllowRead(QuillpressDocument *document, const char *folder);
/* What the job prints; NULL drops it. */
QUILLPRESS_DOCUMENT_API void QuillpressDocumentSetMessages(QuillpressDocument *document,
                                                           QuillpressWrite write, void *context);
QUILLPRESS_DOCUMENT_API void QuillpressDocumentSetProgress(QuillpressDocument *document,
                                                           QuillpressProgress progress, void *context);

QUILLPRESS_DOCUMENT_API int QuillpressDocumentConvertFile(QuillpressDocument *document, const char *job,
                                                          const char *pdf);
QUILLPRESS_DOCUMENT_API int QuillpressDocumentConvertMemory(QuillpressDocument *document, const void *job,
                                                            size_t size, QuillpressWrite write,
                                                            void *context);
QUILLPRESS_DOCUMENT_API int QuillpressDocumentConvert(QuillpressDocument *document, QuillpressRead read,
                                                      void *readContext, QuillpressWrite write,
                                                      void *writeContext);

/* Ends the conversion that runs at this moment, as an error would. Any thread may call it. */
QUILLPRESS_DOCUMENT_API void QuillpressDocumentCancel(QuillpressDocument *document);

/* Of the last conversion. The error is empty when there was none; a warning is NULL beyond the last one. */
QUILLPRESS_DOCUMENT_API const char *QuillpressDocumentError(const QuillpressDocument *document);
QUILLPRESS_DOCUMENT_API const char *QuillpressDocumentWarning(const QuillpressDocument *document,
                                                              size_t index);
/* What the error says, when it is one of the job itself: the error's name in PostScript, as in "undefined";
 * the page that was not complete, from 1; the byte of the job that had been reached, from 0. Empty, 0 and -1
 * when there was none. */
QUILLPRESS_DOCUMENT_API const char *QuillpressDocumentErrorName(const QuillpressDocument *document);
QUILLPRESS_DOCUMENT_API uint64_t QuillpressDocumentErrorPage(const QuillpressDocument *document);
QUILLPRESS_DOCUMENT_API int64_t QuillpressDocumentErrorByte(const QuillpressDocument *document);
/* A font that the job asked for and that another stood in for; NULL beyond the last one. */
QUILLPRESS_DOCUMENT_API const char *QuillpressDocumentSubstitutedFont(const QuillpressDocument *document,
                                                                      size_t index);
QUILLPRESS_DOCUMENT_API uint64_t QuillpressDocumentPageCount(const QuillpressDocument *document);

#ifdef __cplusplus
}
#endif

#endif
