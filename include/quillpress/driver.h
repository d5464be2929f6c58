/* Quillpress driver front end: what the user-mode part of the printer driver calls for every print
 * job. On Windows only.
 *
 * Conventions
 *   Jobs      DocStart or DocStart2K, then DocWrite any number of times, then DocEnd. The job handle is
 *             invalid after DocEnd. A job is used by one thread at a time; the jobs of all processes
 *             take turns by themselves.
 *   Errors    Results are 0 or the given default; an error that the user should know shows a message
 *             box. An invalid job handle shows one too.
 *   Text      UTF-16 with its final zero. Lengths of buffers are in characters and count the zero.
 *   Blocking  DocStart, DocStart2K, DocWrite and DocEnd may wait, without limit, for another job, for
 *             the launcher to take a message, and for the user to close a message box.
 *   Calls     cdecl, exported undecorated.
 */
#ifndef QUILLPRESS_DRIVER_H
#define QUILLPRESS_DRIVER_H

#include <wchar.h>

#ifdef _WIN32
#define QUILLPRESS_CALL __cdecl
#else
#define QUILLPRESS_CALL
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Starts a job on the printer of this name, or, written "\\server\queue" or ",,server,queue", on this
 * port. An empty name is the printer that was set up last for the user, else "Tarnwick Quillpress".
 * Returns the job handle, or 0. */
unsigned long QUILLPRESS_CALL DocStart(wchar_t *printerName);

/* Starts a job of the spooler: an open printer handle, the spooler's job id, the document's name. The
 * printer's name only serves diagnosis. The handle must stay open until DocEnd. Returns the job handle, or 0.
 */
unsigned long QUILLPRESS_CALL DocStart2K(void *printer, unsigned long jobId, wchar_t *printerName,
                                         wchar_t *documentName);

/* Writes the next `count` bytes of the job. Returns 1, or 0 when they could not be written whole; every later
 * call of the job then returns 0 as well. */
int QUILLPRESS_CALL DocWrite(unsigned long job, const void *bytes, unsigned long count);

/* Ends the job: the file is complete, the spooled job is removed, the launcher or the waiting program
 * is told. Returns 1, or 0 when the job is invalid or cannot be ended; the handle is invalid after
 * either. */
int QUILLPRESS_CALL DocEnd(unsigned long job);

/* The integer value of a setting of the job's printer; the default when there is none of this name. */
int QUILLPRESS_CALL getIntVal(unsigned long job, const wchar_t *name, int defaultValue);

/* Copies the text of a setting into the buffer. A setting that is absent, empty, or not shorter than `length`
 * gives the default, cut to the buffer; with a null default the buffer stays as it was. The name "pdfaXML"
 * gives the XMP packet of the document for PDF/A, or the empty text when it does not fit. Returns 1, or 0 for
 * an invalid job. */
unsigned QUILLPRESS_CALL getStringVal(unsigned long job, const wchar_t *name, wchar_t *buffer,
                                      unsigned length, const wchar_t *defaultValue);

/* The XMP packet as UTF-8, for the name "pdfaXML"; `length` is in bytes. Any other name leaves the buffer as
 * it was and returns 1. Returns 0 for an invalid job, and 0 with an empty text when the packet does not fit.
 */
unsigned QUILLPRESS_CALL getStringMultibyte(unsigned long job, const char *name, char *buffer,
                                            unsigned length);

#ifdef __cplusplus
}
#endif

#endif
