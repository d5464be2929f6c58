// Prints the page content of a line of PostScript.
#include <quillpress/converter.h>
#include <stdio.h>

int main(void) {
  const float matrix[6] = {1, 0, 0, 1, 0, 0};
  void* converter = PSOpen(matrix);
  int length = -1;
  const char* content = PSConvertToPdf(converter, "2 setlinewidth ", &length);
  if (content == NULL) return 1;
  fwrite(content, 1, (size_t)length, stdout);
  PSClose(converter);
  return 0;
}
