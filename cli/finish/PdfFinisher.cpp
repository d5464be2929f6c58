#include "cli/finish/PdfFinisher.h"

#include <functional>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFWriter.hh>
#include <set>

#include "cli/archive/Archive.h"
#include "cli/base/Errors.h"
#include "cli/base/Messages.h"

namespace quillpress::cli {

namespace {

// What the library for PDF throws is about files, as a PDF of our own holds no mistakes.
void guarded(const std::function<void()>& work) {
  try {
    work();
  } catch (const UsageError&) {
    throw;
  } catch (const ArchiveError&) {
    throw;
  } catch (const OutputError&) {
    throw;
  } catch (const std::runtime_error& error) {
    throw OutputError(std::string("cannot be written: ") + error.what());
  }
}

qpdf_r3_print_e printingOf(const Permissions& permissions) {
  switch (permissions.printing) {
    case Permissions::Printing::kNone:
      return qpdf_r3p_none;
    case Permissions::Printing::kCoarse:
      return qpdf_r3p_low;
    case Permissions::Printing::kFull:
      return qpdf_r3p_full;
  }
  return qpdf_r3p_none;
}

void setEncryption(QPDFWriter& writer, const Options& options) {
  const Permissions& permissions = options.permissions;
  // An owner without a password would be everybody.
  const std::string& owner = options.ownerPassword.empty() ? options.userPassword : options.ownerPassword;
  // Programs that read texts aloud are always let in, as PDF 2.0 demands.
  constexpr bool kReadAloud = true;
  constexpr bool kEncryptMetadata = true;
  writer.setR6EncryptionParameters(options.userPassword.c_str(), owner.c_str(), kReadAloud,
                                   permissions.copying, permissions.assembling, permissions.annotating,
                                   permissions.fillingForms, permissions.modifying, printingOf(permissions),
                                   kEncryptMetadata);
}

// Empty when the PDF may stay what it is.
std::string versionOf(const Options& options) {
  if (options.archive == ArchivePart::kNone) return options.pdfVersion;
  return options.archive == ArchivePart::k1b ? "1.4" : "1.7";
}

// Object streams came with PDF 1.5.
bool knowsObjectStreams(const std::string& version) {
  return version.empty() || version > "1.4";
}

void writeTo(QPDF& pdf, const Options& options, std::FILE* file) {
  QPDFWriter writer(pdf);
  writer.setOutputFile("the PDF", file, false);
  // Streams are as small as they get.
  writer.setStreamDataMode(qpdf_s_preserve);
  const std::string version = versionOf(options);
  writer.setObjectStreamMode(knowsObjectStreams(version) ? qpdf_o_generate : qpdf_o_disable);
  writer.setLinearization(options.linearize);
  if (!version.empty()) writer.forcePDFVersion(version);
  // PDF/A wants a line's end there, counted or not.
  writer.setNewlineBeforeEndstream(options.archive != ArchivePart::kNone);
  if (options.encrypt) {
    setEncryption(writer, options);
  } else {
    // Equal jobs give equal files. Encryption cannot: it is salted.
    writer.setDeterministicID(true);
  }
  writer.write();
}

}  // namespace

PdfFinisher::PdfFinisher(std::FILE* source, const Options& options, const IntentProfile& intent)
    : options_(options), intent_(intent) {
  guarded([&] {
    std::rewind(source);
    pdf_.processFile("the PDF", source, false);
    if (!options_.pages.isEverything()) selectPages();
    if (options_.rotation != 0) rotatePages();
    setInformation();
    // All of it, before the first page of several files is written.
    if (options_.archive != ArchivePart::kNone) archive(pdf_);
    pageCount_ = pdf_.getAllPages().size();
  });
}

void PdfFinisher::selectPages() {
  QPDFPageDocumentHelper pages(pdf_);
  const std::vector<QPDFPageObjectHelper> all = pages.getAllPages();
  const std::vector<std::uint64_t> wanted = options_.pages.of(all.size());
  if (wanted.empty()) {
    throw UsageError("--pages names no page of the job, which has " + counted(all.size(), "page"));
  }
  lacksPages_ = options_.pages.reachesBeyond(all.size());
  for (const QPDFPageObjectHelper& page : all) pages.removePage(page);
  std::set<std::uint64_t> kept;
  for (const std::uint64_t number : wanted) {
    // A page that comes again is a copy, as a page has one place in the tree.
    const bool isNew = kept.insert(number).second;
    QPDFPageObjectHelper page = all[static_cast<std::size_t>(number)];
    pages.addPage(isNew ? page : page.shallowCopyPage(), false);
  }
  // Bookmarks and links may still name the others, which would keep them in the file.
  for (std::uint64_t number = 0; number < all.size(); ++number) {
    if (kept.contains(number)) continue;
    QPDFPageObjectHelper page = all[static_cast<std::size_t>(number)];
    pdf_.replaceObject(page.getObjectHandle().getObjGen(), QPDFObjectHandle::newNull());
  }
}

void PdfFinisher::rotatePages() {
  for (QPDFPageObjectHelper& page : QPDFPageDocumentHelper(pdf_).getAllPages()) {
    constexpr bool kRelative = true;
    page.rotatePage(options_.rotation, kRelative);
  }
}

void PdfFinisher::setInformation() {
  QPDFObjectHandle trailer = pdf_.getTrailer();
  if (!trailer.getKey("/Info").isDictionary()) {
    trailer.replaceKey("/Info", pdf_.makeIndirectObject(QPDFObjectHandle::newDictionary()));
  }
  QPDFObjectHandle information = trailer.getKey("/Info");
  const auto set = [&information](const char* key, const std::optional<std::string>& text) {
    if (!text) return;
    if (text->empty()) {
      // Said to be none.
      information.removeKey(key);
    } else {
      information.replaceKey(key, QPDFObjectHandle::newUnicodeString(*text));
    }
  };
  set("/Title", options_.title);
  set("/Author", options_.author);
  set("/Subject", options_.subject);
  set("/Keywords", options_.keywords);
}

void PdfFinisher::archive(QPDF& pdf) {
  Archive archive(pdf, options_.archive, intent_);
  archive.make();
  replacesMetadata_ = replacesMetadata_ || archive.replacesMetadata();
}

void PdfFinisher::write(std::FILE* file) {
  guarded([&] { writeTo(pdf_, options_, file); });
}

void PdfFinisher::writePage(std::uint64_t page, std::FILE* file) {
  guarded([&] {
    QPDF single;
    single.emptyPDF();
    QPDFPageDocumentHelper(single).addPage(
        QPDFPageObjectHelper(pdf_.getAllPages()[static_cast<std::size_t>(page)]), false);
    QPDFObjectHandle information = single.copyForeignObject(pdf_.getTrailer().getKey("/Info"));
    single.getTrailer().replaceKey("/Info", information);
    if (options_.archive != ArchivePart::kNone) archive(single);
    writeTo(single, options_, file);
  });
}

}  // namespace quillpress::cli
