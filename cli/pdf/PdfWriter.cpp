#include "cli/pdf/PdfWriter.h"

#include <qpdf/QPDFWriter.hh>

#include "cli/base/Errors.h"
#include "cli/pdf/PdfBuilder.h"

namespace quillpress::cli {

void writePdf(const Document& document, const ObjectStore& objects, const Spool& spool, std::FILE* file) {
  try {
    PdfBuilder builder(document, spool);
    QPDFWriter writer(builder.build(objects));
    writer.setOutputFile("the PDF", file, false);
    // Streams come compressed out of the spool.
    writer.setStreamDataMode(qpdf_s_preserve);
    writer.setObjectStreamMode(qpdf_o_disable);
    writer.setMinimumPDFVersion("1.4");
    // Equal jobs give equal files.
    writer.setDeterministicID(true);
    writer.write();
  } catch (const OutputError&) {
    throw;
  } catch (const std::runtime_error& error) {
    throw OutputError(std::string("cannot be written: ") + error.what());
  }
}

}  // namespace quillpress::cli
