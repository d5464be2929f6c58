#include "postscript/level3/device/DeviceOperators.h"

namespace quillpress::level3 {

namespace {

// What a name in statusdict does: it takes so many operands and leaves results: 'i' for 0, 'b' for false, 't'
// for true.
struct Request {
  std::string_view name;
  int operands;
  std::string_view results;
};

// What programs set up a printer with, which a PDF file has no use for, and what they ask it.
constexpr Request kRequests[] = {
    {"allowjobreset", 0, "b"},     {"checkpassword", 1, "t"},    {"defaultpapertray", 0, "i"},
    {"defaulttimeouts", 0, "iii"}, {"diskonline", 0, "b"},       {"diskstatus", 0, "ii"},
    {"doprinterrors", 0, "b"},     {"dostartpage", 0, "b"},      {"dosysstart", 0, "b"},
    {"duplexmode", 0, "b"},        {"eescratch", 1, "i"},        {"hardwareiomode", 0, "i"},
    {"jobtimeout", 0, "i"},        {"margins", 0, "ii"},         {"newsheet", 0, ""},
    {"pagecount", 0, "i"},         {"pagemargin", 0, "i"},       {"pagestackorder", 0, "b"},
    {"pagetype", 0, "i"},          {"papertray", 0, "i"},        {"sccbatch", 1, "ii"},
    {"sccinteractive", 1, "ii"},   {"setallowjobreset", 1, ""},  {"setdefaultpapertray", 1, ""},
    {"setdefaulttimeouts", 3, ""}, {"setdoprinterrors", 1, ""},  {"setdostartpage", 1, ""},
    {"setdosysstart", 1, ""},      {"setduplexmode", 1, ""},     {"seteescratch", 2, ""},
    {"sethardwareiomode", 1, ""},  {"setjobtimeout", 1, ""},     {"setmargins", 2, ""},
    {"setpagemargin", 1, ""},      {"setpagestackorder", 1, ""}, {"setpagetype", 1, ""},
    {"setpapertray", 1, ""},       {"setpassword", 2, "t"},      {"setprintername", 1, ""},
    {"setresolution", 1, ""},      {"setsccbatch", 3, ""},       {"setsccinteractive", 3, ""},
    {"setsoftwareiomode", 1, ""},  {"settumble", 1, ""},         {"settrayswitch", 1, ""},
    {"softwareiomode", 0, "i"},    {"trayswitch", 0, "b"},       {"tumble", 0, "b"},
};

Object resultOf(char kind) {
  return kind == 'i' ? Object::integer(0) : Object::boolean(kind == 't');
}

}  // namespace

void addStatusDictionary(Interpreter& interpreter) {
  VirtualMemory& memory = interpreter.memory();
  const Dictionary& system = interpreter.systemDictionary();
  Dictionary& status = *system.find(memory.name("statusdict"))->asDictionary();
  const Object pop = *system.find(memory.name("pop"));
  std::vector<Object> steps;
  for (const Request& request : kRequests) {
    steps.assign(static_cast<std::size_t>(request.operands), pop);
    for (const char kind : request.results) steps.push_back(resultOf(kind));
    memory.put(status, memory.name(request.name),
               memory.newArray(std::span<const Object>(steps)).asExecutable());
  }
  for (const std::string_view name : {"product", "revision"}) {
    memory.put(status, memory.name(name), *system.find(memory.name(name)));
  }
  // Values that jobs set rather than ask for.
  for (const std::string_view name : {"manualfeed", "byteorder"}) {
    memory.put(status, memory.name(name), Object::boolean(false));
  }
  for (const std::string_view name : {"manualfeedtimeout", "waittimeout", "buildtime"}) {
    memory.put(status, memory.name(name), Object::integer(0));
  }
  memory.put(status, memory.name("jobname"), memory.newString(std::string_view()));
  // string -> an empty part of it
  const Object getInterval = *system.find(memory.name("getinterval"));
  const std::initializer_list<Object> nothing{Object::integer(0), Object::integer(0), getInterval};
  memory.put(status, memory.name("printername"), memory.newArray(nothing).asExecutable());
}

}  // namespace quillpress::level3
