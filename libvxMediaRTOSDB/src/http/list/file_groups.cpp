#include "libvxMediaRTOSDB/src/http/list/file_groups.h"

#include "libvxMediaRTOSDB/src/http/text/text_append.h"
FileGroups::FileGroups(vxMediaDBOutput* output)
    : mMode(Mode::kBuffered),
      mPage(&output->localBuffer),
      mGroup(&output->localDirectoryBuffer),
      mObject(&output->localEntryBuffer) {}

FileGroups::FileGroups(TextBuffer* page)
    : mMode(Mode::kStraightIntoPage), mPage(page), mGroup(page), mObject(page) {}

void FileGroups::restart() {
    clearText(*mPage);
    mOpen = false;
    mGroups = 0;
}

void FileGroups::enter(std::string_view name) {
    if (mOpen && directory() == name) {
        return;
    }
    leave();
    if (buffered()) {
        clearText(*mGroup);
    }
    appendText(*mGroup, here(), std::string_view(mGroups > 0 ? "," : ""), "{\"d\":\"",
               JsonText{name}, "\",\"fs\":[");
    mOpen = true;
    mDirectoryLength = name.copy(mDirectory, sizeof mDirectory);
    mFiles = 0;
}

void FileGroups::leave() {
    if (!mOpen) {
        return;
    }
    mOpen = false;
    if (buffered() && mFiles == 0) {
        return;
    }
    appendText(*mGroup, here(), kClosing);
    if (buffered()) {
        appendText(*mPage, here(), mGroup->text());
    }
    ++mGroups;
}

TextBuffer* FileGroups::beginFile() {
    if (mFiles++ > 0) {
        appendText(*mGroup, here(), ",");
    }
    appendText(*mObject, here(), "{");
    return mObject;
}

void FileGroups::endFile() {
    appendText(*mObject, here(), "}");
    if (!buffered()) {
        return;
    }
    appendText(*mGroup, here(), mObject->text());
    clearText(*mObject);
}
