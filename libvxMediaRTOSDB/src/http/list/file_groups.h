// The groups of a media list: the objects of its files, gathered by directory.
//
//   {"d":"100MEDIA","fs":[{FILE},{FILE}]},{"d":"101MEDIA","fs":[...]}
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "libvxMediaRTOSDB/src/http/text/text_buffer.h"
#include <mediacheckd/vxMediaRTOSDB/db_requests.h>

class FileGroups {
  public:
    // Builds an object in the entry buffer and a group in the directory buffer; a group reaches the
    // page when it is left and holds a file.
    explicit FileGroups(OutputTexts* texts);

    // Writes everything straight into the page: a group without files stays there.
    explicit FileGroups(TextBuffer* page);

    // Starts anew with an empty page.
    void restart();

    // Makes the directory the current one: unless it is that already, closes the open group and
    // starts the next one.
    // directory: at most 8 characters; copied.
    void enter(std::string_view directory);

    // Closes the open group, if there is one.
    void leave();

    // Starts the object of a file in the open group. Returns the buffer for its keys.
    [[nodiscard]] TextBuffer* beginFile();

    // Ends the object.
    void endFile();

    // False when something did not fit; a restart does not change that.
    [[nodiscard]] bool complete() const {
        return mPage->complete() && mGroup->complete() && mObject->complete();
    }

    // The groups of the page, joined by ",".
    [[nodiscard]] std::string_view text() const { return mPage->text(); }

    // What closes the group that text() leaves open.
    [[nodiscard]] std::string_view closing() const { return mOpen ? kClosing : ""; }

  private:
    // Where a group is built.
    enum class Mode { kBuffered, kStraightIntoPage };

    static constexpr char kClosing[] = "]}";

    [[nodiscard]] bool buffered() const { return mMode == Mode::kBuffered; }
    [[nodiscard]] std::string_view directory() const { return {mDirectory, mDirectoryLength}; }

    Mode mMode;
    TextBuffer* mPage;
    TextBuffer* mGroup;
    TextBuffer* mObject;
    bool mOpen = false;
    char mDirectory[kDirNameSize] = {};
    size_t mDirectoryLength = 0;
    uint32_t mGroups = 0;  // closed ones
    uint32_t mFiles = 0;   // of the open group
};
