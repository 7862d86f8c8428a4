#include "simulator/live/card_watch.h"

#include <sys/inotify.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace simulator {

namespace {

namespace fs = std::filesystem;

constexpr uint32_t kChanges =
    IN_CREATE | IN_CLOSE_WRITE | IN_ATTRIB | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;

void watch(const host::UniqueFd& events, const fs::path& folder) {
    static_cast<void>(inotify_add_watch(events.get(), folder.c_str(), kChanges | IN_ONLYDIR));
}

// A file that appears is told again when it is closed; until then it may be half of one.
bool matters(const inotify_event& event) {
    return (event.mask & IN_CREATE) == 0 || (event.mask & IN_ISDIR) != 0;
}

}  // namespace

CardWatch::CardWatch(const fs::path& card) : mEvents(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    watch(mEvents, card);
    watch(mEvents, card / "DCIM");
    std::error_code none;
    for (fs::directory_iterator entry(card / "DCIM", none), end; !none && entry != end;
         entry.increment(none)) {
        watch(mEvents, entry->path());
    }
}

bool CardWatch::changed() {
    bool changed = false;
    std::array<std::byte, 4096> bytes;
    ssize_t size = 0;
    while ((size = read(mEvents.get(), bytes.data(), bytes.size())) > 0) {
        inotify_event event;
        for (std::size_t place = 0; place + sizeof event <= static_cast<std::size_t>(size);
             place += sizeof event + event.len) {
            std::memcpy(&event, bytes.data() + place, sizeof event);
            changed = changed || matters(event);
        }
    }
    return changed;
}

}  // namespace simulator
