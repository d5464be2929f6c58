#include "umpd/launcher/ChannelNames.h"

namespace quillpress {

ChannelNames channelNames(std::wstring_view sessionPrefix, std::wstring_view channel,
                          std::wstring_view userName) {
  std::wstring base(sessionPrefix);
  base.append(channel).append(L"_").append(userName);
  return {base + L"_event", base + L"_event_end", base + L"_mutex", base + L"_sm"};
}

}  // namespace quillpress
