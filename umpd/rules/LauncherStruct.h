#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace quillpress::driver {
// One field of the record: text in the ANSI code page with its final zero.
using LauncherText = std::array<char, 260>;

// What the front end tells the launcher: a record in memory that both map. Its bytes are a contract between
// programs that are built and updated apart.
struct LauncherStruct {
  std::array<char, 3> header;  // never written by the sender
  LauncherText command;        // "startprint" or "stopprint"
  LauncherText printerName;    // of both commands
  LauncherText outputPath;     // of "stopprint"
  LauncherText documentName;   // of "stopprint"
  LauncherText reserved;       // never written by the sender
};

static_assert(sizeof(LauncherStruct) == 1303);
static_assert(alignof(LauncherStruct) == 1);
static_assert(offsetof(LauncherStruct, header) == 0);
static_assert(offsetof(LauncherStruct, command) == 3);
static_assert(offsetof(LauncherStruct, printerName) == 263);
static_assert(offsetof(LauncherStruct, outputPath) == 523);
static_assert(offsetof(LauncherStruct, documentName) == 783);
static_assert(offsetof(LauncherStruct, reserved) == 1043);

inline constexpr char kStartPrint[] = "startprint";
inline constexpr char kStopPrint[] = "stopprint";

// The name of the channel between the front end and the launcher.
inline constexpr wchar_t kLauncherChannel[] = L"twssend";

// Write the two messages into the record. Texts are in the ANSI code page and are cut to their fields. What a
// message does not write keeps what the record held before.

void writeStartPrint(LauncherStruct& record, std::string_view printerName);

void writeStopPrint(LauncherStruct& record, std::string_view printerName, std::string_view documentName,
                    std::string_view outputPath);

// The kernel objects of one channel. The user's name is part of them: each user has a launcher.
struct ChannelNames {
  std::wstring requestEvent;      // set by the sender: a record is there
  std::wstring acknowledgeEvent;  // set by the receiver: the record has been taken
  std::wstring mutex;             // owned by the receiver while it listens
  std::wstring section;           // holds the record
};

// `sessionPrefix` is "Local\" or empty. An unknown user has the empty name.
ChannelNames channelNames(std::wstring_view sessionPrefix, std::wstring_view channel,
                          std::wstring_view userName);
}  // namespace quillpress::driver
