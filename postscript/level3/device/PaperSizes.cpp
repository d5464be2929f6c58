#include "postscript/level3/device/DeviceOperators.h"
#include "postscript/level3/device/PageDevice.h"
#include "postscript/level3/graphics/MatrixOperands.h"

namespace quillpress::level3 {

namespace {

struct Paper {
  std::string_view name;
  int width;
  int height;
};

// Points, as programs know them from the printers and interpreters that have these names.
constexpr Paper kPapers[] = {
    {"11x17", 792, 1224},   {"a0", 2384, 3370},        {"a1", 1684, 2384},    {"a2", 1191, 1684},
    {"a3", 842, 1191},      {"a4", 595, 842},          {"a4small", 595, 842}, {"a5", 420, 595},
    {"a6", 297, 420},       {"a7", 210, 297},          {"a8", 148, 210},      {"a9", 105, 148},
    {"a10", 73, 105},       {"archA", 648, 864},       {"archB", 864, 1296},  {"archC", 1296, 1728},
    {"archD", 1728, 2592},  {"archE", 2592, 3456},     {"b0", 2835, 4008},    {"b1", 2004, 2835},
    {"b2", 1417, 2004},     {"b3", 1001, 1417},        {"b4", 709, 1001},     {"b5", 499, 709},
    {"b6", 354, 499},       {"c0", 2599, 3677},        {"c1", 1837, 2599},    {"c2", 1298, 1837},
    {"c3", 918, 1298},      {"c4", 649, 918},          {"c5", 459, 649},      {"c6", 323, 459},
    {"flsa", 612, 936},     {"flse", 612, 936},        {"hagaki", 283, 420},  {"halfletter", 396, 612},
    {"isob0", 2835, 4008},  {"isob1", 2004, 2835},     {"isob2", 1417, 2004}, {"isob3", 1001, 1417},
    {"isob4", 709, 1001},   {"isob5", 499, 709},       {"isob6", 354, 499},   {"jisb0", 2920, 4127},
    {"jisb1", 2064, 2920},  {"jisb2", 1460, 2064},     {"jisb3", 1032, 1460}, {"jisb4", 729, 1032},
    {"jisb5", 516, 729},    {"jisb6", 363, 516},       {"ledger", 1224, 792}, {"legal", 612, 1008},
    {"letter", 612, 792},   {"lettersmall", 612, 792}, {"note", 612, 792},    {"pa4", 595, 792},
    {"tabloid", 792, 1224},
};

// Trays of printers, by the paper in them.
constexpr Paper kTrays[] = {
    {"11x17tray", 792, 1224},     {"a3tray", 842, 1191},     {"a4tray", 595, 842},
    {"a5tray", 420, 595},         {"a6tray", 297, 420},      {"b4tray", 709, 1001},
    {"b5tray", 499, 709},         {"flsatray", 612, 936},    {"flsetray", 612, 936},
    {"halflettertray", 396, 612}, {"ledgertray", 1224, 792}, {"legaltray", 612, 1008},
    {"lettertray", 612, 792},
};

// As setpagedevice does: the operands are off the stack while procedures of the job may run.
void takePageSize(Interpreter& interpreter, std::size_t operandCount, bool isAcross) {
  ObjectStack& operands = interpreter.operands();
  const std::span<const Object> top = operands.last(operandCount);
  const std::vector<Object> taken(top.begin(), top.end());
  VirtualMemory& memory = interpreter.memory();
  const Object size =
      memory.newArray(std::initializer_list<Object>{taken[isAcross ? 1 : 0], taken[isAcross ? 0 : 1]});
  const Rooted keptSize(memory, size);
  const Object request = memory.newDictionary(1);
  const Rooted kept(memory, request);
  memory.put(*request.asDictionary(), memory.name("PageSize"), size);
  operands.pop(operandCount);
  try {
    pageDeviceOf(interpreter).setPageDevice(request);
  } catch (const PostscriptError&) {
    for (const Object& operand : taken) operands.push(operand);
    throw;
  }
}

// An even orientation has the paper's other side across.
bool isAcross(const Object& orientation) {
  return orientation.asInteger() % 2 == 0;
}

// width height ->
void setPaper(Interpreter& interpreter) {
  takePageSize(interpreter, 2, false);
}

// width height orientation ->
void setPage(Interpreter& interpreter) {
  takePageSize(interpreter, 3, isAcross(interpreter.operands().top()));
}

// width height margin orientation ->
void setPageParameters(Interpreter& interpreter) {
  takePageSize(interpreter, 4, isAcross(interpreter.operands().top()));
}

}  // namespace

// Names that jobs for printers of the earlier levels call without asking whether they are there.
void addPaperSizes(Interpreter& interpreter) {
  VirtualMemory& memory = interpreter.memory();
  const Object set = interpreter.addInternal("setpagesize", setPaper, "num num");
  const auto add = [&](Dictionary& dictionary, const Paper& paper) {
    const Object procedure = memory
                                 .newArray(std::initializer_list<Object>{Object::integer(paper.width),
                                                                         Object::integer(paper.height), set})
                                 .asExecutable();
    memory.put(dictionary, memory.name(paper.name), procedure);
  };
  for (const Paper& paper : kPapers) add(interpreter.userDictionary(), paper);
  Dictionary& status = *interpreter.systemDictionary().find(memory.name("statusdict"))->asDictionary();
  for (const Paper& tray : kTrays) add(status, tray);
  memory.put(status, memory.name("setpage"), interpreter.addInternal("setpage", setPage, "num num int"));
  memory.put(status, memory.name("setpageparams"),
             interpreter.addInternal("setpageparams", setPageParameters, "num num num int"));
}

}  // namespace quillpress::level3
