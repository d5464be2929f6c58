#pragma once

#include <map>
#include <memory>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <vector>

#include "cli/pdf/Document.h"
#include "cli/pdf/ObjectStore.h"
#include "cli/pdf/SpoolStreams.h"

namespace quillpress::cli {

// Builds libqpdf's picture of a PDF file: a catalogue, one flat page tree, resources that name just what
// each page draws, document information. Equal small objects are shared between pages, since a job may
// have thousands of them.
class PdfBuilder {
 public:
  PdfBuilder(const Document& document, const Spool& spool);

  // Called once. The result lives as long as the builder.
  QPDF& build(const ObjectStore& store);

 private:
  void addObjects(const ObjectStore& store);
  QPDFObjectHandle makePage(const DocumentPage& page);
  QPDFObjectHandle makeContents(const std::vector<std::size_t>& places);
  QPDFObjectHandle makeResources(const std::vector<unsigned>& numbers);
  QPDFObjectHandle resourcesFor(const std::vector<unsigned>& numbers);
  QPDFObjectHandle mediaBoxFor(const Box& box);
  QPDFObjectHandle makeInformation();

  // A stream and the resource category and name by which content refers to it.
  struct Resource {
    std::string category;
    std::string name;
    QPDFObjectHandle stream;
  };

  const Document& document_;
  QPDF pdf_;
  std::shared_ptr<SpoolStreams> streams_;
  QPDFObjectHandle pageType_;
  QPDFObjectHandle flate_;
  QPDFObjectHandle pageTree_;
  Box lastBox_;
  QPDFObjectHandle lastMediaBox_;
  std::map<unsigned, Resource> objects_;
  std::map<std::vector<unsigned>, QPDFObjectHandle> resources_;
};

}  // namespace quillpress::cli
