/* Converts a PostScript job to PDF: convert JOB.ps JOB.pdf */
#include <quillpress/document.h>
#include <stdio.h>

int main(int argc, char **argv) {
  QuillpressDocument *document;
  const char *warning;
  size_t index;
  int status;
  if (argc != 3) {
    fprintf(stderr, "usage: %s JOB.ps JOB.pdf\n", argv[0]);
    return 2;
  }
  document = QuillpressDocumentNew();
  if (document == NULL) return 1;
  status = QuillpressDocumentConvertFile(document, argv[1], argv[2]);
  for (index = 0; (warning = QuillpressDocumentWarning(document, index)) != NULL; ++index) {
    fprintf(stderr, "warning: %s\n", warning);
  }
  if (QuillpressDocumentError(document)[0] != '\0')
    fprintf(stderr, "%s\n", QuillpressDocumentError(document));
  printf("%lu pages\n", (unsigned long)QuillpressDocumentPageCount(document));
  QuillpressDocumentFree(document);
  return status;
}
