#pragma once

namespace quillpress {

class Postscript2Pdf;

// Defines the converter's operators in its interpreter's systemdict, over those of the language.
void registerGraphicsOperators(Postscript2Pdf& converter);

}  // namespace quillpress
