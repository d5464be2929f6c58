#pragma once

#include <string>
#include <string_view>

namespace quillpress {

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

}  // namespace quillpress
