#include "libvxMediaRTOSDB/src/file_groups.h"

FileGroups::FileGroups(vxMediaDBOutput* output)
    : mPage(&output->localBuffer),
      mGroup(&output->localDirectoryBuffer),
      mObject(&output->localEntryBuffer) {}

FileGroups::FileGroups(TextBuffer* page) : mPage(page), mGroup(page), mObject(page) {}

template <typename... Parts>
void FileGroups::append(TextBuffer* buffer, const Parts&... parts) {
    if (!buffer->append(parts...))
        mStatus = HTTP_INTERNAL_ERROR;
}

void FileGroups::restart() {
    mPage->clear();
    mOpen = false;
    mGroups = 0;
}

void FileGroups::enter(std::string_view name) {
    if (mOpen && directory() == name)
        return;
    leave();
    if (buffered())
        mGroup->clear();
    append(mGroup, std::string_view(mGroups > 0 ? "," : ""), "{\"d\":\"", JsonText{name},
           "\",\"fs\":[");
    mOpen = true;
    mDirectoryLength = name.copy(mDirectory, sizeof mDirectory);
    mFiles = 0;
}

void FileGroups::leave() {
    if (!mOpen)
        return;
    mOpen = false;
    if (buffered() && mFiles == 0)
        return;
    append(mGroup, kClosing);
    if (buffered())
        append(mPage, mGroup->text());
    mGroups++;
}

TextBuffer* FileGroups::beginFile() {
    if (mFiles++ > 0)
        append(mGroup, ",");
    append(mObject, "{");
    return mObject;
}

void FileGroups::endFile(int keysStatus) {
    append(mObject, "}");
    if (keysStatus != HTTP_OK)
        mStatus = keysStatus;
    if (!buffered())
        return;
    append(mGroup, mObject->text());
    mObject->clear();
}
