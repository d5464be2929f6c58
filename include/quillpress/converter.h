/* Quillpress converter: PostScript in, PDF page content and PDF objects out.
 *
 * Conventions
 *   Handles    PSOpen returns an opaque handle; PSClose ends it. A handle is used by one thread at a
 *              time. Different handles may live on different threads as long as none of them makes
 *              images or patterns: the list of PDF objects is one for the whole process, unguarded.
 *   Matrices   Six floats (a, b, c, d, tx, ty), row vectors: x' = a*x + c*y + tx, y' = b*x + d*y + ty.
 *   Lengths    In bytes, without the final zero.
 *   Text       Returned text ends with a zero byte and belongs to the converter.
 *   Errors     No C++ exception ever leaves these functions. A failed conversion returns NULL; the
 *              converter stays usable, and PSGetErrorStr tells what happened.
 *   Runaways   A job may run without end ({} loop) or take memory until there is none ({1} loop, {gsave}
 *              loop, /p {p p} def p). The second kind ends as NULL when memory ends, without an error text,
 *              and the converter stays usable; the first does not end. Neither is watched here. A host that
 *              takes jobs from others bounds the process that it converts in: its memory, so that a job
 *              cannot starve the machine, and its time.
 *   Limits     Page content of one call beyond 2^31-1 bytes makes the call fail; so do structures nested
 *              beyond 500 levels where they are printed or compared.
 *   Messages   What a job prints (=, ==, stack, print) goes to the debugger output on Windows. On other
 *              systems it is dropped, unless the environment variable QUILLPRESS_MESSAGES is set to
 *              "stderr".
 *   Calls      cdecl on 32-bit Windows, exported undecorated.
 */
#ifndef QUILLPRESS_CONVERTER_H
#define QUILLPRESS_CONVERTER_H

#include <stdint.h>

#ifdef _WIN32
#define QUILLPRESS_CALL __cdecl
#else
#define QUILLPRESS_CALL
#endif

#if defined(QUILLPRESS_BUILDING) && !defined(_WIN32)
#define QUILLPRESS_API __attribute__((visibility("default")))
#else
#define QUILLPRESS_API /* on Windows the module definition file names the exports */
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Values of PdfObject.kind. */
enum { PDF_OBJECT_PATTERN = 1, PDF_OBJECT_IMAGE = 3 };

/* One PDF object that page content refers to by name: an image XObject or a tiling pattern.
 * Records belong to the process-wide list and stay valid until that list is cleared. */
typedef struct PdfObject {
  char *dictionary;        /* body of the stream dictionary, without << >> and without /Length */
  uint32_t reserved[2];    /* zero */
  int32_t compress;        /* 1: data is plain and may be compressed; 0: the dictionary names its filter */
  char *data;              /* stream data: image samples, or the content text of a pattern cell */
  uint32_t dataLength;     /* bytes in data */
  char *name;              /* resource name with its slash: "/PSI1", "/PA2" */
  int32_t kind;            /* PDF_OBJECT_IMAGE or PDF_OBJECT_PATTERN */
  void *patternDictionary; /* internal: identifies a pattern's dictionary; never follow it */
  void *reservedPointer;   /* NULL */
  char *content;           /* empty text */
} PdfObject;

/* Opens a converter whose pages begin with `matrix` (default user space to page space). Returns NULL
 * only when its memory cannot be had. */
QUILLPRESS_API void *QUILLPRESS_CALL PSOpen(const float matrix[6]);

/* Runs the next chunk of a job, cut anywhere, and returns the page content that it produced; the
 * caller concatenates the texts of a page. `*length` is the chunk's length, or negative for a
 * zero-terminated chunk; on success it becomes the length of the returned text. The text is valid until
 * the next call on the handle. On failure returns NULL and leaves `*length` as it was. */
QUILLPRESS_API const char *QUILLPRESS_CALL PSConvertToPdf(void *handle, const char *data, int *length);

/* Starts a page: one fresh graphics state with `matrix`. Definitions and stacks of the job stay. The
 * result has no meaning. */
QUILLPRESS_API int QUILLPRESS_CALL PSStartPage(void *handle, const float matrix[6]);

/* Returns every PDF object made so far in this process, in order of creation, and their number. The
 * array is never NULL and is freed by the next call; the records are not.
 *
 * PSGetPdfObjects(NULL, NULL) empties the list and returns an array without objects: a host that runs many
 * jobs calls it between them, when their files are written and their converters are closed. Every record
 * handed out before ends there, and names begin anew with 1. */
QUILLPRESS_API PdfObject **QUILLPRESS_CALL PSGetPdfObjects(void *handle, unsigned *count);

/* Returns the text of the last failure, "Exception:[File.cpp:LINE] MESSAGE" and a line feed; empty
 * before the first failure. Valid until the next call on the handle. */
QUILLPRESS_API const char *QUILLPRESS_CALL PSGetErrorStr(void *handle);

/* Ends a converter and frees all that it owns. NULL is ignored. */
QUILLPRESS_API void QUILLPRESS_CALL PSClose(void *handle);

#ifdef __cplusplus
}
#endif

#endif
