#include "libvxMediaRTOSDB/src/http/list/file_groups.h"

FileGroups::FileGroups(OutputTexts* texts)
    : mMode(Mode::kBuffered),
      mPage(&texts->page),
      mGroup(&texts->directory),
      mObject(&texts->entry) {}

FileGroups::FileGroups(TextBuffer* page)
    : mMode(Mode::kStraightIntoPage), mPage(page), mGroup(page), mObject(page) {}

void FileGroups::restart() {
    mPage->clear();
    mOpen = false;
    mGroups = 0;
}

void FileGroups::enter(std::string_view name) {
    if (mOpen && directory() == name) {
        return;
    }
    leave();
    if (buffered()) {
        mGroup->clear();
    }
    mGroup->append(here(), std::string_view(mGroups > 0 ? "," : ""), "{\"d\":\"", JsonText{name},
                   "\",\"fs\":[");
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
    mGroup->append(here(), kClosing);
    if (buffered()) {
        mPage->append(here(), mGroup->text());
    }
    ++mGroups;
}

TextBuffer* FileGroups::beginFile() {
    if (mFiles++ > 0) {
        mGroup->append(here(), ",");
    }
    mObject->append(here(), "{");
    return mObject;
}

void FileGroups::endFile() {
    mObject->append(here(), "}");
    if (!buffered()) {
        return;
    }
    mGroup->append(here(), mObject->text());
    mObject->clear();
}
