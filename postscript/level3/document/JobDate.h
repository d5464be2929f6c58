#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillpress::level3 {

// The date of a %%CreationDate comment, in PDF's form. Programs write it as they like, so that the usual
// forms are understood: "Thu Jan  5 10:11:12 1998", "5 January 1998", "1998-01-05T10:11:12+01:00",
// "D:19980105101112Z", "1/25/1998 10:11 PM". Nothing when the text is none of them, or when day and month
// could be either.
std::optional<std::string> pdfDateOf(std::string_view comment);

// The date that SOURCE_DATE_EPOCH gives, in PDF's form. Nothing without it: what is made of a job does not
// depend on when it is made.
std::optional<std::string> pdfDateOfEnvironment();

}  // namespace quillpress::level3
